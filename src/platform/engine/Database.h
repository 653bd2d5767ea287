#pragma once

#include "platform/engine/EngineError.h"
#include "platform/engine/Recordset.h"
#include "platform/engine/driver/Counters.h"
#include "platform/engine/driver/RowStore.h"
#include "platform/engine/driver/TableDefinition.h"

#include <functional>

/// One open database, in a file or on a server, which takes statements in the suite's query dialect. Everything it
/// refuses is thrown as an EngineError in the engine's own words.
class Database
{
public:
    ~Database();
    Q_DISABLE_COPY_MOVE(Database)

    /// Runs an INSERT, UPDATE or DELETE. @returns the number of rows it touched. @throws EngineError 3065 for a SELECT.
    qint64 execute(const QString &statement);

    /// Runs a SELECT and reads its rows to the end; rows that can be changed, those of "SELECT *" from one table, are
    /// read when they are first asked for, so that adding to a table does not read it. The recordset must not outlive
    /// this database. @throws EngineError 3219 for any other statement.
    Recordset openRecordset(const QString &statement);

    /// The file's name as it was given to openDatabase().
    const QString &path() const;

    /// How long a statement waits for what others hold before it ends in error 3260, in milliseconds; two seconds until
    /// this is called.
    void setPatience(int milliseconds);

    /// Whether others reach it over a network, so that each statement costs a journey.
    bool isRemote() const;

    /// Whether a Pulse is being called: a change is not finished, and what is asked now ends in error 3260.
    bool isBusy() const;

    // ---- tables
    /// Those of the database, as they were when it was opened or last changed here.
    const std::vector<dialect::Table> &tables() const;
    /// The table called `name`, in any case; null where there is none.
    const dialect::Table *table(const QString &name) const;
    void createTable(const TableDefinition &table);

    // ---- rows in bulk; a table that is not there ends in error 3078
    /// Adds rows as they are, with a value for each column of the table.
    void append(const QString &table, const RowStore &rows);
    /// The number that the table's counter gives next.
    qint64 nextNumber(const QString &table) const;
    void setNextNumber(const QString &table, qint64 number);
    /// Lets attendants change the tables of `own` and read those of `others`, nothing else; whoever opens a file may
    /// all.
    void admitAttendants(const QStringList &own, const QStringList &others);
    /// Has the engine learn how the rows lie, so that it finds them quickly; after many were added.
    void analyze();

    // ---- upkeep
    /// Copies a file as it stands between two transactions, while others go on working with it.
    /// @throws EngineError when `file` exists or cannot be written.
    void backupTo(const QString &file);
    /// What is wrong with the storage itself, a sentence each; empty where it is sound.
    QStringList damage();
    /// Runs text in the engine's native language (not the dialect), names in brackets.
    void executeNative(const QString &sql);
    /// The rows of one such statement; they cannot be changed.
    Recordset openNative(const QString &sql);

    /// Renews what the engine needs beside the tables, after the program became a newer one.
    void upgrade();

    // ---- others at the same database
    /// Milliseconds that the database's clock is ahead of this machine's.
    qint64 clockOffset() const;
    /// Can be read when others may have changed something; -1 where nobody tells.
    qintptr changesSocket() const;
    /// The tables that others have changed since this was asked last.
    QStringList changesOfOthers();

    const Counters &counters() const;

private:
    friend class Workspace;
    friend class Recordset;
    friend class Transaction;
    friend class Pulse;
    friend class ReadScope;
    friend class SelectByNumber;
    friend class RowReader;
    struct Private;
    explicit Database(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d;
};

/// A transaction for the life of the object: rolled back on every way out but after commit().
class Transaction
{
public:
    /// @throws EngineError 3260 while somebody else writes, after Database::setPatience().
    explicit Transaction(Database &database);
    ~Transaction();
    Q_DISABLE_COPY_MOVE(Transaction)
    /// @throws EngineError when the changes cannot be stored; they are rolled back then.
    void commit();

private:
    Database &m_database;
    bool m_open = true;
};

/// For the life of the object somebody is called many times a second while the database works, so that windows stay
/// alive during a long change. It must not use the database.
class Pulse
{
public:
    enum Phase { Working, Storing };
    /// What `beat` throws while the database works ends the statement that runs; the transaction around it is to be
    /// given up then. From its first call with Storing on the transaction is being stored: it must throw no more.
    Pulse(Database &database, std::function<void(Phase)> beat);
    ~Pulse();
    Q_DISABLE_COPY_MOVE(Pulse)

    /// Calls it between statements, too, so that many small ones leave time for it.
    void operator()();

private:
    friend class Transaction;
    Database &m_database;
    std::function<void(Phase)> m_beat;
    Phase m_phase = Working;
};

/// Keeps the file open for reading for the life of the object, so that many small statements in a
/// row (a tree build, a search) do not take and give up the file's lock each. May be nested; writes
/// in between go on as usual.
class ReadScope
{
public:
    /// @throws EngineError 3260 while somebody else stores a change, likewise.
    explicit ReadScope(Database &database);
    ~ReadScope();
    Q_DISABLE_COPY_MOVE(ReadScope)

private:
    Database &m_database;
};

/// A SELECT with one number in it that is opened for many numbers, as for the folders of a tree: it is taken apart and
/// translated once. Far away, where each number would cost a journey, the rows of all numbers are read at once after
/// the first few: keep such an object no longer than one walk through a tree.
class SelectByNumber
{
public:
    /// `statement` has any number where the numbers are to stand. @throws EngineError as Database::openRecordset()
    /// does.
    SelectByNumber(Database &database, const QString &statement);
    ~SelectByNumber();
    Q_DISABLE_COPY_MOVE(SelectByNumber)

    /// What Database::openRecordset() would give for the statement with `number` in it; its rows cannot be changed.
    Recordset open(qint64 number);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
