#pragma once

#include "platform/engine/Value.h"

#include <QByteArray>

#include <vector>

struct sqlite3_stmt;

/// The rows of a result, kept small: all their cells lie one behind the other in as few bytes as
/// they need, and become values when they are asked for.
class RowStore
{
public:
    explicit RowStore(int columnCount = 0) : m_columnCount(columnCount) { }

    int rowCount() const { return int(m_rows.size()); }
    /// Adds the row that `statement` stands on.
    void append(sqlite3_stmt *statement);
    Value at(int row, int column) const;
    void remove(int row) { m_rows.erase(m_rows.begin() + row); }
    /// Puts the one row of `other` in the place of `row`.
    void replace(int row, const RowStore &other);
    void append(const RowStore &other);
    /// Drops the rows and keeps the room for others.
    void clear();

private:
    char *room(qsizetype size);

    int m_columnCount;
    QByteArray m_cells; ///< larger than what is used of it
    qsizetype m_used = 0;
    std::vector<qsizetype> m_rows; ///< where each begins
};
