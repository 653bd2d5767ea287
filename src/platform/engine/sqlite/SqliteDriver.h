#pragma once

#include "platform/engine/EngineError.h"
#include "platform/engine/driver/Driver.h"

#include <exception>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// An open file of SQLite.
class SqliteDriver : public Driver
{
public:
    enum class Mode { OpenExisting, CreateNew };

    /// `path` keeps its literal text; a "\" in it counts as the system's separator.
    /// @throws EngineError for a file that is none of the engine's, is damaged or locked.
    SqliteDriver(const QString &path, Mode mode);
    /// A database of no file and without tables, for what is to be reckoned with values alone.
    SqliteDriver();
    ~SqliteDriver() override;

    const dialect::Language &language() const override;
    dialect::Schema schema() override;
    bool isRemote() const override { return false; }

    Prepared prepare(const QString &sql) override;
    qint64 run(Statement &statement, const std::vector<Value> &values, RowStore *rows = nullptr,
               const dialect::Translation *translation = nullptr) override;
    void read(Statement &statement, const std::vector<Value> &values, int columnCount,
              const std::function<void(const RowStore &)> &visit, const dialect::Translation *translation) override;
    void setPulse(std::function<void()> pulse) override;
    void setPatience(int milliseconds) override;

    void begin() override { execute(QStringLiteral("BEGIN IMMEDIATE")); }
    void commit() override { execute(QStringLiteral("COMMIT")); }
    void rollback() override { execute(QStringLiteral("ROLLBACK")); }
    /// Keeps the file open for reading, so that the statements do not take and give up its lock each.
    void beginReading() override;
    void endReading() override { m_readCursor.reset(); }

    void createTable(const TableDefinition &table) override;
    void append(const dialect::Table &table, const RowStore &rows) override;
    qint64 nextNumber(const dialect::Table &table) override;
    void setNextNumber(const dialect::Table &table, qint64 number) override;
    QStringList damage() override;
    void analyze() override { execute(QStringLiteral("ANALYZE")); }
    void copyTo(const QString &file) override;
    void execute(const QString &sql) override;
    Native prepareNative(const QString &sql) override;

private:
    void open(const QString &file, int flags);
    /// Reads the rows of one statement of the engine's own language.
    RowStore read(const QString &sql);
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
    Prepared m_readCursor; ///< an open cursor holds the lock
    std::optional<EngineError> m_refused; ///< by one of our own functions
    std::function<void()> m_pulse;
    std::exception_ptr m_ended; ///< what the pulse threw
    bool m_opened = false;
};
