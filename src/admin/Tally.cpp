#include "admin/Tally.h"

#include <QHash>

#include <bit>

namespace {

quint64 mixed(quint64 bits)
{
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111eb;
    return bits ^ (bits >> 31);
}

/// Of any characters or bytes, eight at a time.
quint64 hashOf(const char *bytes, qsizetype size)
{
    quint64 hash = quint64(size);
    while (size > 0) {
        quint64 part = 0;
        std::memcpy(&part, bytes, std::min<qsizetype>(size, sizeof part));
        hash = mixed(hash + part + 0x9e3779b97f4a7c15);
        bytes += sizeof part;
        size -= sizeof part;
    }
    return hash;
}

struct Figures {
    quint64 sum;
    quint64 hash;
};

Figures figuresOf(const JetValue &value)
{
    if (const auto *number = std::get_if<qint64>(&value))
        return {quint64(*number), mixed(quint64(*number) + 1)};
    if (const auto *fraction = std::get_if<double>(&value))
        return {std::bit_cast<quint64>(*fraction), mixed(std::bit_cast<quint64>(*fraction) + 2)};
    if (const auto *text = std::get_if<QString>(&value))
        return {quint64(text->size()), hashOf(reinterpret_cast<const char *>(text->utf16()), 2 * text->size())};
    if (const auto *bytes = std::get_if<QByteArray>(&value))
        return {quint64(bytes->size()), hashOf(bytes->constData(), bytes->size())};
    return {0, 0};
}

}

void Tally::add(const std::vector<JetValue> &row)
{
    ++m_rows;
    m_columns.resize(row.size());
    quint64 ofRow = 0;
    for (const JetValue &value : row)
        ofRow = mixed(ofRow * 31 + figuresOf(value).hash);
    for (size_t i = 0; i < row.size(); ++i) {
        if (row[i].index() == 0)
            continue;
        const Figures figures = figuresOf(row[i]);
        Column &column = m_columns[i];
        ++column.present;
        column.sum += figures.sum;
        column.hash += mixed(ofRow + figures.hash);
    }
}

std::optional<int> Tally::differenceTo(const Tally &other) const
{
    if (m_rows != other.m_rows)
        return -1;
    for (size_t i = 0; i < std::max(m_columns.size(), other.m_columns.size()); ++i) {
        if (column(i) != other.column(i))
            return int(i);
    }
    return {};
}
