#pragma once

#include "admin/OldCrib.h"

/// What a table holds, in figures that do not depend on the order of its rows: two tables with equal figures hold the
/// same.
class Tally
{
public:
    struct Column {
        qint64 present = 0; ///< values that are there
        /// Exact sum of the numbers; of texts their lengths, of fractions their bits.
        quint64 sum = 0;
        quint64 hash = 0; ///< of each value together with its row

        bool operator==(const Column &) const = default;
    };

    void add(const std::vector<JetValue> &row);
    qint64 rows() const { return m_rows; }
    /// One that no row had is empty.
    Column column(size_t number) const { return number < m_columns.size() ? m_columns[number] : Column(); }

    /// Where the two differ, as a number of a column; -1 for the number of rows, nothing where they are equal.
    std::optional<int> differenceTo(const Tally &other) const;

private:
    qint64 m_rows = 0;
    std::vector<Column> m_columns;
};
