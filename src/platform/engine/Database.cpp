#include "platform/engine/DatabasePrivate.h"

#include "platform/engine/RecordsetPrivate.h"
#include "platform/engine/StoredValue.h"
#include "platform/engine/dialect/Parser.h"
#include "platform/engine/dialect/SqliteWriter.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace {

constexpr size_t maximumKept = 512;
// Longer lists and chains hardly come twice, and the engine below takes a bounded number of parameters.
constexpr size_t maximumLiterals = 100;
constexpr qsizetype shortDateLength = 10;

Value literalValue(const dialect::Literal &literal, const dialect::Parameter &parameter)
{
    Value value = literal.value;
    if (literal.kind == dialect::Token::Integer)
        value = parameter.negated ? -literal.value.toLongLong() : literal.value.toLongLong();
    else if (literal.kind == dialect::Token::Fraction)
        value = parameter.negated ? -literal.value.toDouble() : literal.value.toDouble();
    else if (parameter.shortDate)
        value = literal.value.left(shortDateLength);
    return parameter.storedAs == dialect::ValueKind::Unknown ? value : storedValue(value, parameter.storedAs);
}

}

bool Database::Private::fits(const Kept &kept, const std::vector<dialect::Literal> &literals) const
{
    return std::ranges::all_of(kept.translation.pinned, [&](const dialect::PinnedLiteral &pinned) {
        return literals[pinned.literal].value == pinned.value;
    });
}

Database::Private::Kept &Database::Private::ready(const QString &statement)
{
    dialect::Shape shape = dialect::shapeOf(statement);
    const bool keep = shape.literals.size() <= maximumLiterals;
    const auto found = keep ? m_byShape.find(shape.text) : m_byShape.end();
    Kept *kept = nullptr;
    if (found != m_byShape.end() && fits(*found->second, shape.literals)) {
        m_kept.splice(m_kept.begin(), m_kept, found->second);
        kept = &m_kept.front();
    } else {
        dialect::Translation translation = dialect::translate(
            dialect::parse(statement), schema, keep ? dialect::Literals::AsParameters : dialect::Literals::Inline);
        Connection::Prepared prepared = connection.prepare(translation.sql);
        Kept fresh{shape.text, std::move(translation), std::move(prepared), {}};
        if (!keep) {
            m_passing = std::move(fresh);
            kept = &m_passing;
        } else {
            if (found != m_byShape.end()) {
                m_kept.erase(found->second);
                m_byShape.erase(found);
            } else if (m_kept.size() == maximumKept) {
                m_byShape.erase(m_kept.back().shape);
                m_kept.pop_back();
            }
            m_kept.push_front(std::move(fresh));
            m_byShape.emplace(shape.text, m_kept.begin());
            kept = &m_kept.front();
        }
    }
    kept->values.clear();
    for (const dialect::Parameter &parameter : kept->translation.parameters)
        kept->values.push_back(literalValue(shape.literals[parameter.literal], parameter));
    return *kept;
}

void Database::Private::reloadSchema()
{
    m_byShape.clear();
    m_kept.clear();
    schema = connection.schema();
}

Database::Database(std::unique_ptr<Private> data) : d(std::move(data)) { }

Database::~Database() = default;

qint64 Database::execute(const QString &statement)
{
    Private::Kept &kept = d->ready(statement);
    if (kept.translation.kind == dialect::Statement::SelectRows)
        throw EngineError(EngineError::notAnAction, QStringLiteral("Cannot execute a select query."));
    return d->connection.run(kept.statement.get(), kept.values, nullptr, &kept.translation);
}

Recordset Database::openRecordset(const QString &statement)
{
    const Private::Kept &kept = d->ready(statement);
    if (kept.translation.kind != dialect::Statement::SelectRows)
        throw EngineError(EngineError::notASelect, QStringLiteral("Invalid operation."));
    auto rows = std::make_unique<Recordset::Private>();
    rows->database = d.get();
    rows->columns = kept.translation.columns;
    rows->table = kept.translation.table;
    rows->statement = statement;
    if (rows->table.isEmpty())
        rows->read();
    return Recordset(std::move(rows));
}

const QString &Database::path() const { return d->connection.path(); }

void Database::backupTo(const QString &file)
{
    if (QFileInfo::exists(Connection::nativePath(file)))
        throw EngineError(EngineError::fileExists, QStringLiteral("Database '%1' already exists.").arg(file));
    try {
        d->connection.copyTo(file);
    } catch (...) {
        QFile::remove(Connection::nativePath(file));
        throw;
    }
}

void Database::executeNative(const QString &sql)
{
    d->connection.execute(sql);
    d->reloadSchema();
}

Recordset Database::openNative(const QString &sql)
{
    auto rows = std::make_unique<Recordset::Private>();
    const Connection::Prepared statement = d->connection.prepare(sql);
    rows->database = d.get();
    for (int i = 0; i < sqlite3_column_count(statement.get()); ++i)
        rows->columns.push_back(
            {QString::fromUtf8(sqlite3_column_name(statement.get(), i)), dialect::ValueKind::Unknown});
    rows->rows = RowStore(int(rows->columns.size()));
    d->connection.run(statement.get(), {}, &*rows->rows);
    return Recordset(std::move(rows));
}

const Database::Counters &Database::counters() const { return d->connection.counters; }

Transaction::Transaction(Database &database) : m_database(database)
{
    m_database.d->connection.execute(QStringLiteral("BEGIN IMMEDIATE"));
}

Transaction::~Transaction()
{
    if (!m_open)
        return;
    try {
        m_database.d->connection.execute(QStringLiteral("ROLLBACK"));
    } catch (const EngineError &) {
        // The engine rolled back by itself when it met the error that brought us here.
    }
}

void Transaction::commit()
{
    m_database.d->connection.execute(QStringLiteral("COMMIT"));
    m_open = false;
}

ReadScope::ReadScope(Database &database) : m_database(database)
{
    Database::Private &data = *database.d;
    if (data.readScopes == 0) {
        // An open cursor holds the lock; the second row is there for a file without tables.
        Connection::Prepared cursor =
            data.connection.prepare(QStringLiteral("SELECT 1 FROM sqlite_schema UNION ALL SELECT 2"));
        data.connection.hold(cursor.get());
        data.readCursor = std::move(cursor);
    }
    ++data.readScopes;
}

ReadScope::~ReadScope()
{
    if (--m_database.d->readScopes == 0)
        m_database.d->readCursor.reset();
}
