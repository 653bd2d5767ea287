#pragma once

#include "platform/engine/Database.h"
#include "platform/engine/EngineError.h"
#include "platform/engine/RowStore.h"
#include "platform/engine/dialect/Translation.h"

#include <exception>
#include <functional>
#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// The engine below: an open file of SQLite, its errors in the suite's numbers and words.
class Connection
{
public:
    struct FinalizeStatement {
        void operator()(sqlite3_stmt *statement) const;
    };
    using Prepared = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

    enum class Mode { OpenExisting, CreateNew };

    /// `path` keeps its literal text; a "\" in it counts as the system's separator.
    /// @throws EngineError for a file that is none of the engine's, is damaged or locked.
    Connection(const QString &path, Mode mode);
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    const QString &path() const { return m_path; }

    /// Compiles one statement of the engine's own language. @throws EngineError where it is not one.
    Prepared prepare(const QString &sql);
    /// Runs a statement to its end, with `values` for its "?1" onwards, and adds the rows that it gives to `rows`, if
    /// given. It can be run again then. An error is worded by `translation`, which knows the tables that it was about.
    /// @returns the number of rows that it changed. @throws EngineError
    qint64 run(sqlite3_stmt *statement, const std::vector<Value> &values, RowStore *rows = nullptr,
               const dialect::Translation *translation = nullptr);
    /// Runs a SELECT with `values`; `visit` finds the statement on each row, and may end the reading by what it throws.
    void read(sqlite3_stmt *statement, const std::vector<Value> &values, const std::function<void()> &visit,
              const dialect::Translation *translation);
    /// `pulse` is called some hundreds of times a second while this connection works, and must not use it. What it
    /// throws ends the statement that runs.
    void setPulse(std::function<void()> pulse);
    /// Runs a SELECT to its first row and leaves it there, which keeps the file open for reading.
    void hold(sqlite3_stmt *statement);
    /// Runs any number of statements of the engine's own language and drops their rows.
    void execute(const QString &sql);
    /// Reads the rows of one statement.
    RowStore read(const QString &sql);
    /// Copies the file as it stands between two transactions into a new one.
    void copyTo(const QString &file);

    /// The file's tables with their columns and relations, as they are at present.
    dialect::Schema schema();

    Database::Counters counters;

private:
    template<typename Visit>
    void step(sqlite3_stmt *statement, const std::vector<Value> &values, const dialect::Translation *translation,
              Visit visit);
    /// Throws what went wrong last.
    [[noreturn]] void fail(const dialect::Translation *translation = nullptr, const std::vector<Value> &values = {});
    [[noreturn]] void failRelation(const dialect::Translation *translation, const std::vector<Value> &values);
    [[noreturn]] void failLocked(const dialect::Translation *translation) const;
    bool hasPartner(const dialect::Reference &reference, const std::vector<Value> &values);

    QString m_path;
    sqlite3 *m_connection = nullptr;
    std::optional<EngineError> m_refused; ///< by one of our own functions
    std::function<void()> m_pulse;
    std::exception_ptr m_ended; ///< what the pulse threw
    bool m_opened = false;
};
