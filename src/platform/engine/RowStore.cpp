#include "platform/engine/RowStore.h"

#include "platform/engine/EngineError.h"

#include <sqlite3.h>

#include <limits>

RowStore::Cell RowStore::keepText(const char *text, size_t size)
{
    if (m_texts.size() + size > std::numeric_limits<quint32>::max())
        throw EngineError(EngineError::tooMuchData, QStringLiteral("The result is too large to be read."));
    const Text place{quint32(m_texts.size()), quint32(size)};
    m_texts.insert(m_texts.end(), text, text + size);
    return {.text = place};
}

void RowStore::append(sqlite3_stmt *statement)
{
    for (int column = 0; column < m_columnCount; ++column) {
        Cell cell{.integer = 0};
        Type type = Type::Text;
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
            type = Type::Integer;
            cell.integer = sqlite3_column_int64(statement, column);
            break;
        case SQLITE_FLOAT:
            type = Type::Fraction;
            cell.fraction = sqlite3_column_double(statement, column);
            break;
        case SQLITE_NULL:
            type = Type::Null;
            break;
        default: {
            const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            cell = keepText(text, sqlite3_column_bytes(statement, column));
        }
        }
        m_cells.push_back(cell);
        m_types.push_back(type);
    }
}

Value RowStore::at(int row, int column) const
{
    const Cell &cell = m_cells[index(row, column)];
    switch (m_types[index(row, column)]) {
    case Type::Integer:
        return cell.integer;
    case Type::Fraction:
        return cell.fraction;
    case Type::Text:
        return QString::fromUtf8(m_texts.data() + cell.text.offset, cell.text.size);
    default:
        return {};
    }
}

void RowStore::remove(int row)
{
    const auto first = index(row, 0);
    m_cells.erase(m_cells.begin() + first, m_cells.begin() + first + m_columnCount);
    m_types.erase(m_types.begin() + first, m_types.begin() + first + m_columnCount);
}

RowStore::Cell RowStore::copied(const RowStore &other, size_t index)
{
    const Cell &cell = other.m_cells[index];
    return other.m_types[index] == Type::Text ? keepText(other.m_texts.data() + cell.text.offset, cell.text.size)
                                              : cell;
}

void RowStore::replace(int row, const RowStore &other)
{
    for (int column = 0; column < m_columnCount; ++column) {
        m_cells[index(row, column)] = copied(other, column);
        m_types[index(row, column)] = other.m_types[column];
    }
}

void RowStore::append(const RowStore &other)
{
    for (size_t i = 0; i < other.m_cells.size(); ++i)
        m_cells.push_back(copied(other, i));
    m_types.insert(m_types.end(), other.m_types.begin(), other.m_types.end());
}
