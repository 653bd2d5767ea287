#pragma once

#include "platform/engine/Value.h"

#include <vector>

struct sqlite3_stmt;

/// The rows of a result, kept small: the texts of all rows lie one behind the other as the engine
/// below gave them, and become values when they are asked for.
class RowStore
{
public:
    explicit RowStore(int columnCount = 0) : m_columnCount(columnCount) { }

    int columnCount() const { return m_columnCount; }
    int rowCount() const { return m_columnCount == 0 ? 0 : int(m_cells.size() / m_columnCount); }
    /// Adds the row that `statement` stands on.
    void append(sqlite3_stmt *statement);
    Value at(int row, int column) const;
    void remove(int row);
    /// Puts the one row of `other` in the place of `row`.
    void replace(int row, const RowStore &other);
    void append(const RowStore &other);

private:
    enum class Type : quint8 { Null, Integer, Fraction, Text };
    struct Text {
        quint32 offset, size;
    };
    union Cell {
        qint64 integer;
        double fraction;
        Text text;
    };
    size_t index(int row, int column) const { return size_t(row) * m_columnCount + column; }
    Cell keepText(const char *text, size_t size);
    Cell copied(const RowStore &other, size_t index);

    int m_columnCount;
    std::vector<Cell> m_cells;
    std::vector<Type> m_types;
    std::vector<char> m_texts;
};
