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
    /// The table may have columns besides `columns`, which stay empty; without them a row has a value for each of the
    /// table's. @throws EngineError 3078 where the table is missing.
    RowWriter(Database &database, const QString &table, const QStringList &columns = {});

    /// One row, a value for each of the columns in their order.
    void add(const std::vector<Value> &values);
    /// The same; std::nullopt leaves a column empty.
    template<typename... Values>
    void add(const Values &...values)
    {
        add(std::vector<Value>{cell(values)...});
    }

    /// Stores what add() has gathered; to be called after the last row.
    void flush();

private:
    static Value cell(qint64 number) { return number; }
    static Value cell(const QString &text) { return text; }
    static Value cell(Cents price) { return double(price.amount) / 100; }
    template<typename Content>
    static Value cell(const std::optional<Content> &content)
    {
        return content ? cell(*content) : Value();
    }

    Database &m_database;
    QString m_table;
    std::vector<int> m_valueOf; ///< by column of the table, -1 for none
    RowStore m_rows;
};
