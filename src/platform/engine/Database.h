#pragma once

#include "platform/engine/EngineError.h"
#include "platform/engine/Recordset.h"

/// One open database file, which takes statements in the suite's query dialect. Everything it
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

    /// Copies the file as it stands between two transactions, while others go on working with it.
    /// @throws EngineError when `file` exists or cannot be written.
    void backupTo(const QString &file);

    /// Runs text in the engine's native language (not the dialect): tables and indexes of a new
    /// file, upkeep.
    void executeNative(const QString &sql);
    /// The rows of one such statement; they cannot be changed.
    Recordset openNative(const QString &sql);

    /// What has been asked of the engine since the file was opened; tests and measurements read it.
    struct Counters {
        qint64 prepared = 0; ///< statements compiled
        qint64 run = 0; ///< statements run
        qint64 rowsFetched = 0;
        qint64 fullScanSteps = 0; ///< steps through a table without an index
    };
    const Counters &counters() const;

private:
    friend class Workspace;
    friend class Recordset;
    friend class Transaction;
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
    /// @throws EngineError 3260 while somebody else writes, after two seconds of waiting.
    explicit Transaction(Database &database);
    ~Transaction();
    Q_DISABLE_COPY_MOVE(Transaction)
    /// @throws EngineError when the changes cannot be stored; they are rolled back then.
    void commit();

private:
    Database &m_database;
    bool m_open = true;
};

/// Keeps the file open for reading for the life of the object, so that many small statements in a
/// row (a tree build, a search) do not take and give up the file's lock each. May be nested; writes
/// in between go on as usual.
class ReadScope
{
public:
    /// @throws EngineError 3260 while somebody else stores a change, after two seconds of waiting.
    explicit ReadScope(Database &database);
    ~ReadScope();
    Q_DISABLE_COPY_MOVE(ReadScope)

private:
    Database &m_database;
};

/// A SELECT with one number in it that is opened for many numbers, as for the folders of a tree: it is taken apart and
/// translated once.
class SelectByNumber
{
public:
    /// `statement` has any number where the numbers are to stand. @throws EngineError as Database::openRecordset()
    /// does.
    SelectByNumber(Database &database, const QString &statement);
    ~SelectByNumber();
    Q_DISABLE_COPY_MOVE(SelectByNumber)

    /// What Database::openRecordset() would give for the statement with `number` in it.
    Recordset open(qint64 number) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
