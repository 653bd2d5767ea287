#pragma once

#include "platform/engine/Database.h"

#include <optional>

/// An amount of money.
struct Cents {
    qint64 amount;
};

/// Stores many rows of one table, a few hundred at a time.
class RowWriter
{
public:
    /// @throws EngineError 3078 where the table is missing.
    RowWriter(Database &database, const QString &table);

    /// One row, a value for every column; std::nullopt leaves one empty.
    template<typename... Values>
    void add(const Values &...values)
    {
        m_rows.beginRow();
        (addCell(values), ...);
        if (m_rows.rowCount() == rowsAtOnce)
            flush();
    }

    /// Stores what add() has gathered; to be called after the last row.
    void flush();

private:
    static constexpr int rowsAtOnce = 500;

    void addCell(qint64 number) { m_rows.addInteger(number); }
    void addCell(const QString &text) { m_rows.add(text); }
    void addCell(Cents price) { m_rows.addFraction(double(price.amount) / 100); }
    template<typename Value>
    void addCell(const std::optional<Value> &value)
    {
        if (value)
            addCell(*value);
        else
            m_rows.addNull();
    }

    Database &m_database;
    QString m_table;
    RowStore m_rows;
};
