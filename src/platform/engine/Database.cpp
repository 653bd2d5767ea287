#include "platform/engine/DatabasePrivate.h"

#include "platform/engine/RecordsetPrivate.h"
#include "platform/engine/dialect/Lexer.h"
#include "platform/engine/dialect/Parser.h"
#include "platform/engine/dialect/StatementWriter.h"
#include "platform/engine/driver/StoredValue.h"
#include "platform/system/ProgramFolder.h"
#include "platform/text/Format.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

// Longer lists and chains hardly come twice, and the engine below takes a bounded number of parameters.
constexpr size_t maximumLiterals = 100;

Value literalValue(const dialect::Literal &literal, const dialect::Parameter &parameter,
                   const dialect::Language &language)
{
    Value value = literal.value;
    if (parameter.pattern)
        return language.patternText(literal.value);
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
        dialect::Translation translation =
            dialect::translate(dialect::parse(statement), schema,
                               keep ? dialect::Literals::AsParameters : dialect::Literals::Inline, driver->language());
        prepared = this->prepared(std::move(translation));
        if (keep)
            cache.insert(shape.text, prepared);
    }
    BoundStatement bound{prepared, {}};
    bound.values.reserve(prepared->translation.parameters.size());
    for (const dialect::Parameter &parameter : prepared->translation.parameters)
        bound.values.push_back(literalValue(shape.literals[parameter.literal], parameter, driver->language()));
    return bound;
}

std::shared_ptr<const PreparedStatement> Database::Private::prepared(dialect::Translation translation)
{
    Driver::Prepared handle = driver->prepare(translation.sql);
    const int columns = int(translation.columns.size()) + (translation.table.isEmpty() ? 0 : 1);
    return std::make_shared<PreparedStatement>(PreparedStatement{std::move(translation), std::move(handle), columns});
}

qint64 Database::Private::run(const BoundStatement &statement, RowStore *rows)
{
    return driver->run(*statement.prepared->handle, statement.values, rows, &statement.translation());
}

void Database::Private::reloadSchema()
{
    cache.clear();
    schema = driver->schema();
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

const QString &Database::path() const { return d->path; }

void Database::setPatience(int milliseconds) { d->driver->setPatience(milliseconds); }

bool Database::isRemote() const { return d->driver->isRemote(); }

bool Database::isBusy() const { return d->driver.isBeating; }

const std::vector<dialect::Table> &Database::tables() const { return d->schema.tables; }

const dialect::Table *Database::table(const QString &name) const { return std::as_const(d->schema).find(name); }

void Database::createTable(const TableDefinition &table)
{
    d->driver->createTable(table);
    d->reloadSchema();
}

void Database::append(const QString &table, const RowStore &rows) { d->driver->append(d->schema.table(table), rows); }

qint64 Database::nextNumber(const QString &table) const { return d->driver->nextNumber(d->schema.table(table)); }

void Database::setNextNumber(const QString &table, qint64 number)
{
    d->driver->setNextNumber(d->schema.table(table), number);
}

void Database::admitAttendants(const QStringList &own, const QStringList &others)
{
    d->driver->admitAttendants(own, others);
}

void Database::analyze() { d->driver->analyze(); }

void Database::upgrade() { d->driver->upgrade(); }

qint64 Database::clockOffset() const { return d->driver->clockOffset(); }

qintptr Database::changesSocket() const { return d->driver->changesSocket(); }

QStringList Database::changesOfOthers() { return d->driver->changesOfOthers(); }

QStringList Database::damage() { return d->driver->damage(); }

void Database::backupTo(const QString &file)
{
    if (QFileInfo::exists(ProgramFolder::toNative(file)))
        throw EngineError::of(EngineError::fileExists, file);
    try {
        d->driver->copyTo(file);
    } catch (...) {
        QFile::remove(ProgramFolder::toNative(file));
        throw;
    }
}

void Database::executeNative(const QString &sql)
{
    d->driver->execute(sql);
    d->reloadSchema();
}

Recordset Database::openNative(const QString &sql)
{
    auto prepared = std::make_shared<PreparedStatement>();
    const Driver::Native native = d->driver->prepareNative(sql);
    prepared->handle = native.statement;
    for (const QString &name : native.columns)
        prepared->translation.columns.push_back({name, dialect::ValueKind::Unknown});
    prepared->columnCount = int(native.columns.size());
    return Recordset(std::make_unique<Recordset::Private>(*d, Private::BoundStatement{prepared, {}}));
}

const Counters &Database::counters() const { return d->driver->counters; }

Transaction::Transaction(Database &database) : m_database(database) { m_database.d->driver->begin(); }

Transaction::~Transaction()
{
    if (!m_open)
        return;
    try {
        m_database.d->driver->rollback();
    } catch (const EngineError &) {
        // The engine below rolled back by itself when it met the error that brought us here.
    }
}

void Transaction::commit()
{
    Pulse *const pulse = m_database.d->pulse;
    const auto goOnWorking = qScopeGuard([=] {
        if (pulse)
            pulse->m_phase = Pulse::Working;
    });
    if (pulse) {
        pulse->m_phase = Pulse::Storing;
        (*pulse)();
    }
    m_database.d->driver->commit();
    m_open = false;
}

Pulse::Pulse(Database &database, std::function<void(Phase)> beat) : m_database(database), m_beat(std::move(beat))
{
    m_database.d->driver->setPulse([this] { (*this)(); });
    m_database.d->pulse = this;
}

Pulse::~Pulse()
{
    m_database.d->pulse = nullptr;
    m_database.d->driver->setPulse({});
}

void Pulse::operator()()
{
    const QScopedValueRollback beating(m_database.d->driver.isBeating, true);
    m_beat(m_phase);
}

ReadScope::ReadScope(Database &database) : m_database(database)
{
    if (m_database.d->readScopes == 0)
        m_database.d->driver->beginReading();
    ++m_database.d->readScopes;
}

ReadScope::~ReadScope()
{
    if (--m_database.d->readScopes == 0)
        m_database.d->driver->endReading();
}

struct SelectByNumber::Private {
    Private(Database::Private &database, const QString &text) : database(database), text(text)
    {
        statement = database.boundSelect(text);
        auto readOnly = std::make_shared<PreparedStatement>(*statement.prepared);
        readOnly->translation.table.clear();
        statement.prepared = readOnly;
    }

    /// Nothing where the statement is not of a kind that can be asked for all numbers at once.
    void readAll();

    Database::Private &database;
    QString text;
    Database::Private::BoundStatement statement;
    int opened = 0;
    std::optional<RowStore> all; ///< the rows of all numbers, those of one number together
    QHash<qint64, std::pair<int, int>> places = {}; ///< of each number's rows: the first, and the one behind the last
};

void SelectByNumber::Private::readAll()
{
    std::optional<dialect::Translation> translation =
        dialect::translateForAll(dialect::parse(text), database.schema, database.driver->language());
    if (!translation)
        return;
    const auto prepared = database.prepared(std::move(*translation));
    RowStore rows(prepared->columnCount);
    database.driver->run(*prepared->handle, {}, &rows, &prepared->translation);
    for (int row = 0; row < rows.rowCount(); ++row) {
        auto place = places.find(rows.at(row, prepared->columnCount - 1).toInteger());
        if (place == places.end())
            place = places.insert(rows.at(row, prepared->columnCount - 1).toInteger(), {row, row});
        place->second = row + 1;
    }
    all = std::move(rows);
}

SelectByNumber::SelectByNumber(Database &database, const QString &statement)
    : d(std::make_unique<Private>(*database.d, statement))
{
}

SelectByNumber::~SelectByNumber() = default;

Recordset SelectByNumber::open(qint64 number)
{
    constexpr int fewJourneys = 6; // as many as a path of ordinary length takes
    if (d->database.driver->isRemote() && d->opened++ == fewJourneys)
        d->readAll();
    Database::Private::BoundStatement numbered = d->statement;
    numbered.values.at(0) = storedValue(number, numbered.translation().parameters.at(0).storedAs);
    std::optional<RowStore> rows;
    if (d->all) {
        const auto [first, last] = d->places.value(number);
        rows.emplace(d->all->columnCount()).append(*d->all, first, last);
    }
    return Recordset(std::make_unique<Recordset::Private>(d->database, std::move(numbered), std::move(rows)));
}
