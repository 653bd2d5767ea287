#pragma once

#include "platform/engine/driver/Value.h"

#include <QByteArray>

#include <vector>

/// The rows of a result, kept small: all their cells lie one behind the other in as few bytes as
/// they need, and become values when they are asked for.
class RowStore
{
public:
    explicit RowStore(int columnCount = 0) : m_columnCount(columnCount) { }

    int rowCount() const { return int(m_rows.size()); }
    int columnCount() const { return m_columnCount; }
    /// Begins a new row behind the last; a cell for each column is to follow, in their order.
    void beginRow() { m_rows.push_back(m_used); }
    void addNull();
    void addInteger(qint64 number);
    void addFraction(double number);
    /// `text` in UTF-8, of `size` bytes.
    void addText(const void *text, qsizetype size);
    void add(const Value &value);
    Value at(int row, int column) const;
    void remove(int row) { m_rows.erase(m_rows.begin() + row); }
    /// Puts the one row of `other` in the place of `row`.
    void replace(int row, const RowStore &other);
    void append(const RowStore &other) { append(other, 0, other.rowCount()); }
    /// Adds the rows from `first` up to, and without, `last` of a store whose rows lie as they were added.
    void append(const RowStore &other, int first, int last);
    /// Drops the rows and keeps the room for others.
    void clear();

private:
    char *room(qsizetype size);

    int m_columnCount;
    QByteArray m_cells; ///< larger than what is used of it
    qsizetype m_used = 0;
    std::vector<qsizetype> m_rows; ///< where each begins
};
