#pragma once

#include "platform/engine/dialect/Language.h"
#include "platform/engine/dialect/Translation.h"
#include "platform/engine/driver/Counters.h"
#include "platform/engine/driver/RowStore.h"
#include "platform/engine/driver/TableDefinition.h"

#include <QStringList>

#include <functional>
#include <memory>

/// One open database of one engine: what it takes statements in, and who runs them. What it refuses is an EngineError
/// in the suite's numbers and words.
class Driver
{
public:
    /// A statement made ready to be run again and again.
    class Statement
    {
    public:
        Statement() = default;
        virtual ~Statement() = default;
        Q_DISABLE_COPY_MOVE(Statement)
    };
    using Prepared = std::shared_ptr<Statement>;

    Driver() = default;
    virtual ~Driver() = default;
    Q_DISABLE_COPY_MOVE(Driver)

    virtual const dialect::Language &language() const = 0;
    /// The tables with their columns and relations, as they are at present.
    virtual dialect::Schema schema() = 0;
    /// Whether each statement costs a journey, so that one large statement is better than many small ones.
    virtual bool isRemote() const = 0;

    // ---- statements; `translation` says what one was about, for the words of an error
    virtual Prepared prepare(const QString &sql) = 0;
    /// Runs a statement to its end, with `values` for its parameters, and adds the rows that it gives to `rows`, if
    /// given. @returns the number of rows that it changed. @throws EngineError
    virtual qint64 run(Statement &statement, const std::vector<Value> &values, RowStore *rows = nullptr,
                       const dialect::Translation *translation = nullptr) = 0;
    /// Runs a SELECT; `visit` is given each row alone, and may end the reading by what it throws.
    virtual void read(Statement &statement, const std::vector<Value> &values, int columnCount,
                      const std::function<void(const RowStore &)> &visit, const dialect::Translation *translation) = 0;
    /// `pulse` is called many times a second while this database works, and must not use it. What it throws ends the
    /// statement that runs. An empty one ends that.
    virtual void setPulse(std::function<void()> pulse) = 0;
    /// How long a statement waits for what others hold, in milliseconds; two seconds until then.
    virtual void setPatience(int milliseconds) = 0;

    // ---- transactions
    /// From here to commit() or rollback() nobody else writes what this program's other desks would write.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    /// Between these, many small statements are read in a row.
    virtual void beginReading() = 0;
    virtual void endReading() = 0;

    // ---- making, moving and looking after databases
    virtual void createTable(const TableDefinition &table) = 0;
    /// Adds rows as they are, with a value for each column of `table`.
    virtual void append(const dialect::Table &table, const RowStore &rows) = 0;
    /// The number that the table's counter gives next.
    virtual qint64 nextNumber(const dialect::Table &table) = 0;
    virtual void setNextNumber(const dialect::Table &table, qint64 number) = 0;
    /// What is wrong with the storage itself; empty where it is sound.
    virtual QStringList damage() = 0;
    /// Has the engine learn how the rows lie, so that it finds them quickly; after many were added.
    virtual void analyze() = 0;
    /// Lets attendants change the tables of `own` and read those of `others`.
    virtual void admitAttendants(const QStringList &, const QStringList &) { }
    /// Renews what the engine needs beside the tables.
    virtual void upgrade() { }
    /// Copies the database as it stands between two transactions into a new file.
    virtual void copyTo(const QString &file) = 0;
    /// Runs any number of statements of the engine's own language, names in brackets, and drops their rows.
    virtual void execute(const QString &sql) = 0;
    /// A SELECT of that language, names in brackets as well, with the names of its columns.
    struct Native {
        Prepared statement;
        QStringList columns;
    };
    virtual Native prepareNative(const QString &sql) = 0;

    // ---- others at the same database, see Database
    virtual qint64 clockOffset() { return 0; }
    virtual qintptr changesSocket() { return -1; }
    virtual QStringList changesOfOthers() { return {}; }

    Counters counters;
};
