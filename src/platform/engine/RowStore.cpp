#include "platform/engine/RowStore.h"

#include <sqlite3.h>

#include <cstring>

namespace {

// A cell begins with its type. Behind it stand an integer, eight bytes of a fraction, or a text's length and its bytes.
enum CellType : char { NullCell, IntegerCell, FractionCell, TextCell };

constexpr qsizetype largestNumber = 10; // a 64-bit integer by seven bits a byte

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
        m_cells.resize(m_cells.size() * 2 + size);
    return m_cells.data() + m_used;
}

void RowStore::append(sqlite3_stmt *statement)
{
    m_rows.push_back(m_used);
    for (int column = 0; column < m_columnCount; ++column) {
        // Taken once as a value, the column is looked up once and not for each question. The engine below allows the
        // questions as long as one thread alone uses the connection.
        sqlite3_value *const value = sqlite3_column_value(statement, column);
        const int type = sqlite3_value_type(value);
        const void *text = type == SQLITE_TEXT || type == SQLITE_BLOB ? sqlite3_value_blob(value) : nullptr;
        const int size = text ? sqlite3_value_bytes(value) : 0;
        char *const cell = room(1 + largestNumber + size);
        char *end = cell + 1;
        if (type == SQLITE_INTEGER) {
            *cell = IntegerCell;
            end = writeInteger(end, sqlite3_value_int64(value));
        } else if (type == SQLITE_FLOAT) {
            const double fraction = sqlite3_value_double(value);
            *cell = FractionCell;
            std::memcpy(end, &fraction, sizeof fraction);
            end += sizeof fraction;
        } else if (type == SQLITE_NULL) {
            *cell = NullCell;
        } else {
            *cell = TextCell;
            end = writeInteger(end, size);
            if (size > 0)
                std::memcpy(end, text, size);
            end += size;
        }
        m_used += end - cell;
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

void RowStore::append(const RowStore &other)
{
    for (const qsizetype begin : other.m_rows)
        m_rows.push_back(m_used + begin);
    std::memcpy(room(other.m_used), other.m_cells.constData(), other.m_used);
    m_used += other.m_used;
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
