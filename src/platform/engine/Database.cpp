#include "platform/engine/DatabasePrivate.h"

#include "platform/engine/RecordsetPrivate.h"
#include "platform/engine/StoredValue.h"
#include "platform/engine/dialect/Lexer.h"
#include "platform/engine/dialect/Parser.h"
#include "platform/engine/dialect/SqliteWriter.h"
#include "platform/system/ProgramFolder.h"
#include "platform/text/Format.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>

namespace {

// Longer lists and chains hardly come twice, and the engine below takes a bounded number of parameters.
constexpr size_t maximumLiterals = 100;

Value literalValue(const dialect::Literal &literal, const dialect::Parameter &parameter)
{
    Value value = literal.value;
    if (literal.kind == dialect::Token::Integer)
        value = parameter.negated ? -literal.value.toLongLong() : literal.value.toLongLong();
    else if (literal.kind == dialect::Token::Fraction)
        value = parameter.negated ? -literal.value.toDouble() : literal.value.toDouble();
    else if (parameter.shortDate)
        value = Format::shortDate(literal.value);
    return parameter.storedAs == dialect::ValueKind::Unknown ? value : storedValue(value, parameter.storedAs);
}

}

Database::Private::BoundStatement Database::Private::bound(const QString &statement)
{
    const dialect::Shape shape = dialect::shapeOf(statement);
    const bool keep = shape.literals.size() <= maximumLiterals;
    const auto isPinnedTo = [&](const dialect::PinnedLiteral &pinned) {
        return shape.literals[pinned.literal].value == pinned.value;
    };
    std::shared_ptr<const PreparedStatement> prepared = keep ? cache.find(shape.text) : nullptr;
    if (!prepared || !std::ranges::all_of(prepared->translation.pinned, isPinnedTo)) {
        dialect::Translation translation = dialect::translate(
            dialect::parse(statement), schema, keep ? dialect::Literals::AsParameters : dialect::Literals::Inline);
        Connection::Prepared handle = connection.prepare(translation.sql);
        prepared = std::make_shared<PreparedStatement>(PreparedStatement{std::move(translation), std::move(handle)});
        if (keep)
            cache.insert(shape.text, prepared);
    }
    BoundStatement bound{prepared, {}};
    bound.values.reserve(prepared->translation.parameters.size());
    for (const dialect::Parameter &parameter : prepared->translation.parameters)
        bound.values.push_back(literalValue(shape.literals[parameter.literal], parameter));
    return bound;
}

qint64 Database::Private::run(const BoundStatement &statement, RowStore *rows)
{
    return connection.run(statement.prepared->handle.get(), statement.values, rows, &statement.translation());
}

void Database::Private::reloadSchema()
{
    cache.clear();
    schema = connection.schema();
}

Database::Database(std::unique_ptr<Private> data) : d(std::move(data)) { }

Database::~Database() = default;

qint64 Database::execute(const QString &statement)
{
    const Private::BoundStatement action = d->bound(statement);
    if (action.translation().kind == dialect::Statement::SelectRows)
        throw EngineError(EngineError::notAnAction, QStringLiteral("Cannot execute a select query."));
    return d->run(action);
}

Database::Private::BoundStatement Database::Private::boundSelect(const QString &statement)
{
    BoundStatement rows = bound(statement);
    if (rows.translation().kind != dialect::Statement::SelectRows)
        throw EngineError(EngineError::notASelect, QStringLiteral("Invalid operation."));
    return rows;
}

Recordset Database::openRecordset(const QString &statement)
{
    return Recordset(std::make_unique<Recordset::Private>(*d, d->boundSelect(statement)));
}

const QString &Database::path() const { return d->connection.path(); }

void Database::backupTo(const QString &file)
{
    if (QFileInfo::exists(ProgramFolder::toNative(file)))
        throw EngineError::of(EngineError::fileExists, file);
    try {
        d->connection.copyTo(file);
    } catch (...) {
        QFile::remove(ProgramFolder::toNative(file));
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
    auto prepared = std::make_shared<PreparedStatement>();
    prepared->handle = d->connection.prepare(sql);
    for (int i = 0; i < sqlite3_column_count(prepared->handle.get()); ++i)
        prepared->translation.columns.push_back(
            {QString::fromUtf8(sqlite3_column_name(prepared->handle.get(), i)), dialect::ValueKind::Unknown});
    return Recordset(std::make_unique<Recordset::Private>(*d, Private::BoundStatement{prepared, {}}));
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
        // The engine below rolled back by itself when it met the error that brought us here.
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

struct SelectByNumber::Private {
    Database::Private &database;
    Database::Private::BoundStatement statement;
};

SelectByNumber::SelectByNumber(Database &database, const QString &statement)
    : d(new Private{*database.d, database.d->boundSelect(statement)})
{
}

SelectByNumber::~SelectByNumber() = default;

Recordset SelectByNumber::open(qint64 number) const
{
    Database::Private::BoundStatement numbered = d->statement;
    numbered.values.at(0) = storedValue(number, numbered.translation().parameters.at(0).storedAs);
    return Recordset(std::make_unique<Recordset::Private>(d->database, std::move(numbered)));
}
