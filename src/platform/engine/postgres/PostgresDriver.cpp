#include "platform/engine/postgres/PostgresDriver.h"

#include "platform/engine/dialect/SqlText.h"
#include "platform/engine/postgres/Libpq.h"
#include "platform/engine/postgres/PostgresLanguage.h"
#include "platform/engine/postgres/ServerFunctions.h"

#include <QDateTime>

#include <algorithm>
#include <charconv>

namespace {

using Message = ServerConnection::Message;

Message text(const char *sql) { return {Message::Text, sql, {}, nullptr}; }

// Whoever changes something in several steps looks first; until those are done no other desk may change it.
constexpr char oneWriter[] = "SELECT pg_advisory_xact_lock(hashtextextended('vorlane.' || current_schema(), 0))";
std::vector<Message> beginWriting() { return {text("BEGIN"), text(oneWriter)}; }

// A crib's own channel: see vorlane_changed().
constexpr char listening[] =
    "DO $$ BEGIN EXECUTE 'LISTEN vorlane_' || quote_ident(current_schema())::regnamespace::oid; END $$";
constexpr char snapshot[] = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY";

template<typename Number>
Number numberIn(const char *text, qsizetype size)
{
    Number number{};
    std::from_chars(text, text + size, number);
    return number;
}

/// Adds all rows of `result`, whose kinds the server tells.
void addRows(RowStore &rows, const PGresult *result)
{
    enum Type : Oid { Boolean = 16, Int8 = 20, Int2 = 21, Int4 = 23, Float4 = 700, Float8 = 701, Numeric = 1700 };
    const Libpq &pq = libpq();
    for (int row = 0; row < pq.ntuples(result); ++row) {
        rows.beginRow();
        for (int column = 0; column < rows.columnCount(); ++column) {
            const char *const cell = pq.getvalue(result, row, column);
            const int size = pq.getlength(result, row, column);
            if (pq.getisnull(result, row, column)) {
                rows.addNull();
                continue;
            }
            switch (pq.ftype(result, column)) {
            case Boolean:
                rows.addInteger(*cell == 't' ? 1 : 0);
                break;
            case Int8:
            case Int4:
            case Int2:
                rows.addInteger(numberIn<qint64>(cell, size));
                break;
            case Float8:
            case Float4:
            case Numeric:
                rows.addFraction(numberIn<double>(cell, size));
                break;
            default:
                rows.addText(cell, size);
            }
        }
    }
}

}

class PostgresDriver::KnownStatement : public Driver::Statement
{
public:
    KnownStatement(const QString &sql, int number, std::shared_ptr<Dropped> dropped)
        : sql(sql.toUtf8()), m_dropped(std::move(dropped))
    {
        setNumber(number);
    }
    ~KnownStatement() override { m_dropped->push_back({name, generation}); }

    void setNumber(int number) { name = 's' + QByteArray::number(number); }
    /// The server may know it or not.
    void dropAs(int connection, int nextNumber)
    {
        m_dropped->push_back({name, connection});
        setNumber(nextNumber);
    }

    const QByteArray sql;
    QByteArray name;
    int generation = 0; ///< of the connection whose server knows it

private:
    std::shared_ptr<Dropped> m_dropped;
};

PostgresDriver::PostgresDriver(const QString &path, const ConnectionFile::Settings &settings)
    : m_path(path), m_connection(path, settings, counters)
{
}

PostgresDriver::~PostgresDriver() = default;

const dialect::Language &PostgresDriver::language() const { return postgresLanguage; }

// ---- statements

Driver::Prepared PostgresDriver::prepare(const QString &sql)
{
    ++counters.prepared;
    return std::make_shared<KnownStatement>(sql, ++m_statements, m_dropped);
}

qint64 PostgresDriver::run(Statement &statement, const std::vector<Value> &values, RowStore *rows,
                           const dialect::Translation *translation)
{
    const auto visit = [&](const PGresult *result) {
        counters.rowsFetched += libpq().ntuples(result);
        if (rows)
            addRows(*rows, result);
    };
    const int before = rows ? rows->rowCount() : 0;
    const auto restart = [&] {
        while (rows && rows->rowCount() > before)
            rows->remove(rows->rowCount() - 1);
    };
    return travel(statement, values, translation, visit, restart, false);
}

void PostgresDriver::read(Statement &statement, const std::vector<Value> &values, int columnCount,
                          const std::function<void(const RowStore &)> &visit, const dialect::Translation *translation)
{
    RowStore row(columnCount);
    const auto visitRow = [&](const PGresult *result) {
        if (libpq().ntuples(result) == 0) // the last result of such a reading
            return;
        ++counters.rowsFetched;
        row.clear();
        addRows(row, result);
        visit(row);
    };
    // Rows that were handed out cannot be taken back.
    const auto restart = [&] { throw connectionLost(m_path, LostChange::None); };
    travel(statement, values, translation, visitRow, restart, true);
}

qint64 PostgresDriver::travel(Statement &prepared, const std::vector<Value> &values,
                              const dialect::Translation *translation, const ServerConnection::VisitResult &visit,
                              const std::function<void()> &restart, bool rowByRow)
{
    auto &statement = static_cast<KnownStatement &>(prepared);
    const bool reads = !translation || translation->kind == dialect::Statement::SelectRows;
    // The server's texts end at a character of the code 0.
    if (std::ranges::any_of(values,
                            [](const Value &value) { return value.isText() && value.toText().contains(QChar(0)); }))
        throw EngineError::of(EngineError::typeMismatch);
    ++counters.run;
    // A transaction that was lost stays so to its end.
    if (m_transaction == Phase::Open)
        failIfLost(LostChange::NothingStored);
    else if (m_connection.noticesLoss())
        reconnect();
    const bool alone = m_transaction == Phase::None;
    const bool hadSnapshot = m_snapshot;
    ServerConnection::Answer answer = travelOnce(statement, values, reads, visit, rowByRow);
    if (m_connection.isLost() && alone && reads && !hadSnapshot) {
        restart();
        reconnect();
        answer = travelOnce(statement, values, reads, visit, rowByRow);
    }
    failIfLost(reads && alone ? LostChange::None : alone ? LostChange::Unknown : LostChange::NothingStored);
    if (answer.error)
        fail(*answer.error, translation);
    return reads ? 0 : answer.changed;
}

ServerConnection::Answer PostgresDriver::travelOnce(KnownStatement &statement, const std::vector<Value> &values,
                                                    bool reads, const ServerConnection::VisitResult &visit,
                                                    bool rowByRow)
{
    std::vector<Message> messages;
    const bool inTransaction = m_transaction != Phase::None;
    if (m_snapshot && (!reads || inTransaction)) {
        m_connection.sendAlong("COMMIT");
        m_snapshot = false;
    }
    for (const auto &[name, generation] : std::exchange(*m_dropped, {}))
        if (generation == m_connection.generation())
            m_connection.sendAlong("DEALLOCATE " + name);
    if (m_transaction == Phase::Due) {
        messages = beginWriting();
        m_transaction = Phase::Open;
    } else if (reads && m_reading && !inTransaction && !m_snapshot) {
        messages.push_back(text(snapshot));
        m_snapshot = true;
    }
    // A statement that fails in a transaction is undone alone.
    if (inTransaction)
        messages.push_back(text("SAVEPOINT one"));
    const bool known = statement.generation == m_connection.generation();
    const size_t preparing = messages.size();
    if (!known)
        messages.push_back({Message::Prepare, statement.sql, statement.name, nullptr});
    messages.push_back({Message::Run, {}, statement.name, &values});
    if (inTransaction)
        messages.push_back(text("RELEASE SAVEPOINT one"));

    ServerConnection::Answer answer;
    try {
        answer = m_connection.travel(messages, visit, rowByRow);
    } catch (...) { // somebody has seen enough
        if (!known)
            statement.dropAs(m_connection.generation(), ++m_statements);
        if (std::exchange(m_snapshot, false))
            m_connection.sendAlong("ROLLBACK");
        throw;
    }
    // A statement stays known even where it fails.
    if (!known && answer.done > preparing)
        statement.generation = m_connection.generation();
    if (answer.error && m_snapshot)
        m_connection.sendAlong("ROLLBACK");
    else if (answer.error && inTransaction && answer.done >= preparing)
        m_connection.sendAlong("ROLLBACK TO SAVEPOINT one");
    else if (answer.error && inTransaction)
        beginAnew(); // somebody else is writing
    m_snapshot = m_snapshot && !answer.error && !m_connection.isLost();
    return answer;
}

void PostgresDriver::reconnect()
{
    // What was read at one moment cannot go on at another.
    const bool hadSnapshot = std::exchange(m_snapshot, false);
    m_connection.connect();
    if (m_listening)
        m_connection.sendAlong(listening);
    if (hadSnapshot)
        throw connectionLost(m_path, LostChange::None);
}

void PostgresDriver::failIfLost(LostChange change)
{
    if (m_connection.isLost())
        throw connectionLost(m_path, change);
}

void PostgresDriver::fail(const ServerError &error, const dialect::Translation *translation)
{
    const bool reads = !translation || translation->kind == dialect::Statement::SelectRows;
    if (error.isFarewell())
        throw connectionLost(m_path, reads ? LostChange::None : LostChange::NothingStored);
    throw error.inEnginesWords(translation, error.is("23503") ? relation(error.constraint) : dialect::ForeignKey{});
}

RowStore PostgresDriver::rowsOf(const QString &sql, int columns)
{
    const Prepared statement = prepare(sql);
    RowStore rows(columns);
    run(*statement, {}, &rows);
    return rows;
}

QStringList PostgresDriver::columnNames(Statement &prepared)
{
    auto &statement = static_cast<KnownStatement &>(prepared);
    const Message prepare[] = {{Message::Prepare, statement.sql, statement.name, nullptr}};
    const std::optional<ServerError> error = m_connection.travel(prepare).error;
    failIfLost(LostChange::None);
    if (error && std::exchange(m_snapshot, false))
        m_connection.sendAlong("ROLLBACK");
    check(error);
    statement.generation = m_connection.generation();
    const QStringList names = m_connection.columnNames(statement.name);
    failIfLost(LostChange::None);
    return names;
}

// ---- transactions

void PostgresDriver::begin() { m_transaction = Phase::Due; }

void PostgresDriver::beginAnew()
{
    rollback();
    begin();
}

void PostgresDriver::commit()
{
    if (std::exchange(m_transaction, Phase::None) != Phase::Open)
        return;
    failIfLost(LostChange::NothingStored);
    const Message commit[] = {text("COMMIT")};
    const ServerConnection::Answer answer = m_connection.travel(commit);
    failIfLost(LostChange::Unknown);
    check(answer.error);
    if (answer.did != "COMMIT") // the server takes the end of a broken transaction for a rollback
        throw connectionLost(m_path, LostChange::NothingStored);
}

void PostgresDriver::rollback()
{
    if (std::exchange(m_transaction, Phase::None) == Phase::Open && !m_connection.isLost())
        m_connection.sendAlong("ROLLBACK");
}

void PostgresDriver::endReading()
{
    m_reading = false;
    if (std::exchange(m_snapshot, false))
        m_connection.sendAlong("COMMIT");
}

void PostgresDriver::settle(Snapshot snapshot)
{
    if (m_transaction == Phase::None && m_connection.noticesLoss())
        reconnect();
    const bool begins = m_transaction == Phase::Due;
    if ((begins || snapshot == Snapshot::Ends) && std::exchange(m_snapshot, false))
        m_connection.sendAlong("COMMIT");
    if (!begins)
        return;
    m_transaction = Phase::Open;
    const std::optional<ServerError> error = m_connection.travel(beginWriting()).error;
    if (error)
        beginAnew();
    check(error);
}

void PostgresDriver::check(const std::optional<ServerError> &error)
{
    failIfLost(m_transaction == Phase::Open ? LostChange::NothingStored : LostChange::Unknown);
    if (error)
        fail(*error, nullptr);
}

// ---- others at the same database

qint64 PostgresDriver::clockOffset()
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const RowStore now = rowsOf(QStringLiteral("SELECT (extract(epoch FROM clock_timestamp()) * 1000)::bigint"), 1);
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    return now.at(0, 0).toInteger() - (before + after) / 2;
}

qintptr PostgresDriver::changesSocket()
{
    if (!std::exchange(m_listening, true))
        m_connection.sendAlong(listening);
    return m_connection.socket();
}
