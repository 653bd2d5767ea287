#pragma once

#include "platform/engine/Database.h"

// What tests do to a database in the engine's own words, with one meaning for a file and for a server.

/// Whether a disk has taken what is written is not what a test asks.
inline void dontWaitForDisk(Database &database)
{
    if (!database.isRemote())
        database.executeNative("PRAGMA synchronous = OFF");
}

/// Has each `deed` (INSERT, DELETE) on a table fail with the word "refused", where `condition` holds.
inline void refuse(Database &database, const QString &deed, const QString &table, const QString &condition = "1 = 1")
{
    const QString sql = database.isRemote()
        ? "CREATE FUNCTION refusal() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN IF %3 THEN RAISE EXCEPTION "
          "'refused'; END IF; RETURN COALESCE(NEW, OLD); END $$; "
          "CREATE TRIGGER refusal BEFORE %1 ON [%2] FOR EACH ROW EXECUTE FUNCTION refusal()"
        : "CREATE TRIGGER refusal BEFORE %1 ON [%2] WHEN %3 BEGIN SELECT RAISE(ABORT, 'refused'); END";
    database.executeNative(sql.arg(deed, table, condition));
}

inline void refuseNoMore(Database &database)
{
    database.executeNative(database.isRemote() ? "DROP FUNCTION refusal CASCADE" : "DROP TRIGGER refusal");
}

/// While it lives a database looks after no relation, so that a row may name one that is not there.
class WithoutRelations
{
public:
    explicit WithoutRelations(Database &database) : m_database(database)
    {
        m_database.executeNative(m_database.isRemote() ? "SET session_replication_role = replica"
                                                       : "PRAGMA foreign_keys = OFF");
    }
    ~WithoutRelations()
    {
        m_database.executeNative(m_database.isRemote() ? "RESET session_replication_role" : "PRAGMA foreign_keys = ON");
    }
    Q_DISABLE_COPY_MOVE(WithoutRelations)

private:
    Database &m_database;
};

/// Keeps everybody else from reading and writing until ROLLBACK.
inline void holdAll(Database &database)
{
    QStringList tables;
    for (const dialect::Table &table : database.tables())
        tables.append('[' + table.name + ']');
    database.executeNative(database.isRemote() ? "BEGIN; LOCK TABLE " + tables.join(", ") : "BEGIN EXCLUSIVE");
}

/// Has a database give up after 10 ms what others hold.
inline void dontWaitForOthers(Database &database)
{
    database.executeNative(database.isRemote() ? "SET lock_timeout = 10" : "PRAGMA busy_timeout = 10");
}
