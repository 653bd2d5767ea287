#include "platform/engine/driver/RowStore.h"

#include <algorithm>
#include <cstring>

namespace {

// A cell begins with its type. Behind it stand an integer, eight bytes of a fraction, or a text's length and its bytes.
enum CellType : char { NullCell, IntegerCell, FractionCell, TextCell };

constexpr qsizetype largestNumber = 10; // a 64-bit integer by seven bits a byte
constexpr qsizetype smallestRoom = 128; // most results are one short row

// Small numbers, of either sign, take few bytes: seven bits each, the lowest first, the sign in the very lowest.
char *writeInteger(char *to, qint64 number)
{
    quint64 rest = (quint64(number) << 1) ^ quint64(number >> 63);
    for (; rest >= 0x80; rest >>= 7)
        *to++ = char(rest | 0x80);
    *to++ = char(rest);
    return to;
}

qint64 readInteger(const char *&from)
{
    quint64 bits = 0;
    int shift = 0;
    for (; *from & 0x80; ++from, shift += 7)
        bits |= quint64(*from & 0x7f) << shift;
    bits |= quint64(*from++) << shift;
    return qint64(bits >> 1) ^ -qint64(bits & 1);
}

const char *behindCell(const char *cell)
{
    switch (*cell++) {
    case IntegerCell:
        readInteger(cell);
        return cell;
    case FractionCell:
        return cell + sizeof(double);
    case TextCell: {
        const qint64 size = readInteger(cell);
        return cell + size;
    }
    default:
        return cell;
    }
}

}

char *RowStore::room(qsizetype size)
{
    if (m_cells.size() - m_used < size)
        m_cells.resize(std::max(m_cells.size() * 2 + size, smallestRoom));
    return m_cells.data() + m_used;
}

void RowStore::addNull()
{
    *room(1) = NullCell;
    ++m_used;
}

void RowStore::addInteger(qint64 number)
{
    char *const cell = room(1 + largestNumber);
    *cell = IntegerCell;
    m_used += writeInteger(cell + 1, number) - cell;
}

void RowStore::addFraction(double number)
{
    char *const cell = room(1 + sizeof number);
    *cell = FractionCell;
    std::memcpy(cell + 1, &number, sizeof number);
    m_used += 1 + sizeof number;
}

void RowStore::addText(const void *text, qsizetype size)
{
    char *const cell = room(1 + largestNumber + size);
    *cell = TextCell;
    char *const end = writeInteger(cell + 1, size);
    if (size > 0)
        std::memcpy(end, text, size);
    m_used += end + size - cell;
}

void RowStore::add(const Value &value)
{
    if (value.isNull()) {
        addNull();
    } else if (value.isInteger()) {
        addInteger(value.toInteger());
    } else if (value.isText()) {
        const QByteArray text = value.toText().toUtf8();
        addText(text.constData(), text.size());
    } else {
        addFraction(value.toNumber());
    }
}

Value RowStore::at(int row, int column) const
{
    const char *cell = m_cells.constData() + m_rows[row];
    while (column-- > 0)
        cell = behindCell(cell);
    switch (*cell++) {
    case IntegerCell:
        return readInteger(cell);
    case FractionCell: {
        double fraction;
        std::memcpy(&fraction, cell, sizeof fraction);
        return fraction;
    }
    case TextCell: {
        const qint64 size = readInteger(cell);
        return QString::fromUtf8(cell, size);
    }
    default:
        return {};
    }
}

void RowStore::append(const RowStore &other, int first, int last)
{
    if (first >= last)
        return;
    const qsizetype begin = other.m_rows[first];
    const qsizetype end = last < other.rowCount() ? other.m_rows[last] : other.m_used;
    char *const cells = room(end - begin);
    for (int row = first; row < last; ++row)
        m_rows.push_back(m_used + other.m_rows[row] - begin);
    std::memcpy(cells, other.m_cells.constData() + begin, end - begin);
    m_used += end - begin;
}

void RowStore::clear()
{
    m_rows.clear();
    m_used = 0;
}

void RowStore::replace(int row, const RowStore &other)
{
    append(other);
    m_rows[row] = m_rows.back();
    m_rows.pop_back();
}
