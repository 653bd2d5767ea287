#pragma once

#include "platform/engine/Database.h"

/// Stores many rows of a table that may have columns of others besides; those stay empty.
class NamedRows
{
public:
    NamedRows(Database &database, const QString &table, const QStringList &columns);
    /// A value for each of the columns, in their order.
    void add(const std::vector<Value> &values);
    /// Stores what add() has gathered; to be called after the last row.
    void flush();

private:
    Database &m_database;
    QString m_table;
    std::vector<int> m_valueOf; ///< by column of the table, -1 for none
    RowStore m_rows;
};
