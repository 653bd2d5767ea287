#pragma once

#include "platform/engine/driver/Driver.h"
#include "platform/engine/postgres/ServerConnection.h"

/// A database on a server of PostgreSQL.
class PostgresDriver : public Driver
{
public:
    /// `path` is the connection file's name. @throws EngineError for a server that cannot be reached, refuses the user
    /// or is too old.
    PostgresDriver(const QString &path, const ConnectionFile::Settings &settings);
    ~PostgresDriver() override;

    /// Whether the functions beside the tables are this program's; a database without tables needs none yet.
    bool isUpToDate();
    /// Makes them this program's, and the indexes that rest on them anew.
    void upgrade() override;

    const dialect::Language &language() const override;
    dialect::Schema schema() override;
    bool isRemote() const override { return true; }

    Prepared prepare(const QString &sql) override;
    qint64 run(Statement &statement, const std::vector<Value> &values, RowStore *rows = nullptr,
               const dialect::Translation *translation = nullptr) override;
    void read(Statement &statement, const std::vector<Value> &values, int columnCount,
              const std::function<void(const RowStore &)> &visit, const dialect::Translation *translation) override;
    void setPatience(int milliseconds) override { m_connection.setPatience(milliseconds); }
    void setPulse(std::function<void()> pulse) override { m_connection.setPulse(std::move(pulse)); }

    /// One desk writes at a time, as with a file, so that what a change looked at first stays so until it is stored.
    void begin() override;
    void commit() override;
    void rollback() override;
    /// Between these everything is read as it was at one moment, and locks nobody.
    void beginReading() override { m_reading = true; }
    void endReading() override;

    void createTable(const TableDefinition &table) override;
    void append(const dialect::Table &table, const RowStore &rows) override;
    qint64 nextNumber(const dialect::Table &table) override;
    void setNextNumber(const dialect::Table &table, qint64 number) override;
    /// The server looks after its storage itself.
    QStringList damage() override { return {}; }
    void admitAttendants(const QStringList &own, const QStringList &others) override;
    void analyze() override;
    [[noreturn]] void copyTo(const QString &file) override;
    void execute(const QString &sql) override;
    Native prepareNative(const QString &sql) override;

    qint64 clockOffset() override;
    qintptr changesSocket() override;
    QStringList changesOfOthers() override { return m_connection.changesOfOthers(); }

private:
    class KnownStatement;

    /// Of a transaction: none, one that begins with the next statement, one that has begun.
    enum class Phase { None, Due, Open };

    ServerConnection::Answer travelOnce(KnownStatement &statement, const std::vector<Value> &values, bool reads,
                                        const ServerConnection::VisitResult &visit, bool rowByRow);
    /// Where the connection is lost during a SELECT, that is asked once more, after `restart`.
    qint64 travel(Statement &statement, const std::vector<Value> &values, const dialect::Translation *translation,
                  const ServerConnection::VisitResult &visit, const std::function<void()> &restart, bool rowByRow);
    /// For what is said apart from such journeys: begins what is due before it. What only reads leaves the moment at
    /// which a read scope sees everything as it is.
    enum class Snapshot { Stays, Ends };
    void settle(Snapshot snapshot = Snapshot::Ends);
    /// After a beginning that failed, so that the next statement tries again.
    void beginAnew();
    void check(const std::optional<ServerError> &error);
    void reconnect();
    RowStore rowsOf(const QString &sql, int columns);
    dialect::ForeignKey relation(const QString &constraint);
    QStringList columnNames(Statement &statement);
    [[noreturn]] void fail(const ServerError &error, const dialect::Translation *translation);
    void failIfLost(LostChange change);
    /// Of the functions in the database; 0 where there are none.
    qint64 version();

    QString m_path;
    ServerConnection m_connection;
    /// Statements that the server may forget, with the connection that knows them.
    using Dropped = std::vector<std::pair<QByteArray, int>>;
    std::shared_ptr<Dropped> m_dropped = std::make_shared<Dropped>();
    int m_statements = 0;
    Phase m_transaction = Phase::None;
    bool m_reading = false; ///< in a read scope
    bool m_snapshot = false; ///< whose transaction is open
    bool m_listening = false;
};
