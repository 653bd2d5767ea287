#pragma once

#include "platform/engine/Database.h"

#include <QStringList>

#include <optional>

/// An amount of money.
struct Cents {
    qint64 amount;
};

/// Stores many rows of one table in few statements.
class RowWriter
{
public:
    RowWriter(Database &database, const QString &table)
        : m_database(database), m_head("INSERT INTO [" + table + "] VALUES ")
    {
    }

    /// One row, a value for every column; std::nullopt leaves one empty.
    template<typename... Values>
    void add(const Values &...values)
    {
        m_rows << '(' + QStringList{literal(values)...}.join(',') + ')';
        if (m_rows.size() == 500)
            flush();
    }

    /// Stores what add() has gathered; to be called after the last row.
    void flush();

private:
    static QString literal(qint64 number) { return QString::number(number); }
    static QString literal(const QString &text);
    static QString literal(Cents price);
    template<typename Value>
    static QString literal(const std::optional<Value> &value)
    {
        return value ? literal(*value) : "NULL";
    }

    Database &m_database;
    QString m_head;
    QStringList m_rows;
};
