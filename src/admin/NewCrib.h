#pragma once

#include "admin/OldCrib.h"
#include "platform/engine/Database.h"

/// A database in the making that takes the rows of an old file as they are.
class NewCrib
{
public:
    /// Makes the schema's tables, empty, and those that the old file has besides, within a transaction of the caller's.
    NewCrib(Database &database, const std::vector<ImportTable> &tables);

    /// Stores a row, with a value for every column; some time until flush() at the latest.
    void append(const ImportTable &table, const std::vector<JetValue> &row);
    void flush();
    /// To be called after the last row: has the engine prepare for finding them.
    void finish();
    /// Lets the table's counter go on behind `number`, unless it is further already.
    void setLastNumber(const QString &table, qint64 number);

    /// Lets a database that is read through once take little memory.
    static void keepSmall(Database &database);
    /// Reads the rows of a table as append() took them.
    static void read(Database &database, const ImportTable &table,
                     const std::function<void(const std::vector<JetValue> &)> &visit);

private:
    void addCell(const JetValue &value, ImportKind kind);

    Database &m_database;
    QStringList m_indexes; ///< statements that make them
    const ImportTable *m_table = nullptr; ///< of the rows that wait
    RowStore m_rows;
};
