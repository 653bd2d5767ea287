#include "platform/engine/RecordsetPrivate.h"

#include "platform/engine/dialect/Parser.h"
#include "platform/engine/dialect/SqlText.h"
#include "platform/engine/dialect/StatementWriter.h"
#include "platform/engine/driver/StoredValue.h"

#include <algorithm>

// ---- rows

Recordset::Private::Private(Database::Private &owner, Database::Private::BoundStatement statement,
                            std::optional<RowStore> known)
    : database(owner), source(std::move(statement)), read(std::move(known))
{
    // Whoever only adds to a table need not wait until it has been read.
    if (table().isEmpty())
        rows();
}

const RowStore &Recordset::Private::rows()
{
    if (!read) {
        RowStore all(source.prepared->columnCount);
        database.run(source, &all);
        read = std::move(all);
    }
    return *read;
}

void Recordset::Private::requireCurrent()
{
    if (current < 0 || current >= count())
        throw EngineError::of(EngineError::noCurrentRecord);
}

void Recordset::Private::moveTo(int row)
{
    mode = Reading;
    current = row;
}

Recordset::Recordset(std::unique_ptr<Private> data) : d(std::move(data)) { }

Recordset::Recordset(Recordset &&) noexcept = default;

Recordset &Recordset::operator=(Recordset &&) noexcept = default;

Recordset::~Recordset() = default;

int Recordset::recordCount() const { return d->count(); }

bool Recordset::atBeginning() const { return d->current < 0 || isEmpty(); }

bool Recordset::atEnd() const { return d->current >= d->count(); }

void Recordset::moveFirst() { setPosition(0); }

void Recordset::moveLast() { setPosition(d->count() - 1); }

void Recordset::moveNext()
{
    if (atEnd())
        throw EngineError::of(EngineError::noCurrentRecord);
    d->moveTo(d->current + 1);
}

void Recordset::movePrevious()
{
    if (atBeginning())
        throw EngineError::of(EngineError::noCurrentRecord);
    d->moveTo(d->current - 1);
}

int Recordset::position() const { return d->current; }

void Recordset::setPosition(int row)
{
    if (row < 0 || row >= d->count())
        throw EngineError::of(EngineError::noCurrentRecord);
    d->moveTo(row);
}

// ---- fields

int Recordset::fieldCount() const { return int(d->columns().size()); }

QString Recordset::fieldName(int column) const { return d->columns().at(column).name; }

int Recordset::fieldIndex(QStringView name) const
{
    const std::vector<dialect::OutputColumn> &columns = d->columns();
    const auto found = std::ranges::find_if(
        columns, [&](const dialect::OutputColumn &column) { return dialect::sameName(column.name, name); });
    if (found == columns.end())
        throw EngineError(EngineError::noSuchField,
                          QStringLiteral("Item not found in this collection: '%1'.").arg(name));
    return int(found - columns.begin());
}

Value Recordset::field(int column) const
{
    if (column < 0 || column >= fieldCount())
        throw EngineError(EngineError::noSuchField,
                          QStringLiteral("Item not found in this collection: %1.").arg(column));
    if (d->mode != Private::Reading && d->changes[column])
        return *d->changes[column];
    if (d->mode == Private::Adding)
        return {};
    d->requireCurrent();
    return d->rows().at(d->current, column);
}

Value Recordset::field(QStringView name) const { return field(fieldIndex(name)); }

Value Recordset::at(int row, int column) const
{
    if (row < 0 || row >= d->count() || column < 0 || column >= fieldCount())
        throw EngineError::of(EngineError::noCurrentRecord);
    return d->rows().at(row, column);
}

bool Recordset::findFirst(const QString &criteria)
{
    // An engine decides about each row, so that a condition means here what it means behind WHERE. The rows are here
    // already: none is sent anywhere.
    const dialect::ExpressionPtr condition = dialect::parseCondition(criteria);
    Driver &engine = scratchDriver();
    const Driver::Prepared test =
        engine.prepare(dialect::translateCondition(*condition, d->columns(), engine.language()));
    for (int row = 0; row < d->count(); ++row) {
        std::vector<Value> fields;
        for (int column = 0; column < fieldCount(); ++column)
            fields.push_back(d->rows().at(row, column));
        RowStore met(1);
        engine.run(*test, fields, &met);
        if (met.at(0, 0).toBool()) {
            d->moveTo(row);
            return true;
        }
    }
    return false;
}

// ---- changes

void Recordset::Private::requireChangeable() const
{
    if (table().isEmpty())
        throw EngineError::of(EngineError::readOnly);
}

void Recordset::Private::requireMode() const
{
    if (mode == Reading)
        throw EngineError(EngineError::updateWithoutEdit,
                          QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
}

void Recordset::Private::begin(Mode wanted)
{
    mode = wanted;
    changes.assign(columns().size(), std::nullopt);
}

Recordset::Private::Change Recordset::Private::pendingChange() const
{
    const dialect::Table &target = database.schema.table(table());
    Change change;
    change.translation.kind = mode == Adding ? dialect::Statement::Insert : dialect::Statement::Update;
    change.translation.table = target.name;
    QStringList names, parameters, assignments;
    for (size_t i = 0; i < changes.size(); ++i) {
        if (!changes[i])
            continue;
        const QString &column = columns()[i].name;
        change.values.push_back(*changes[i]);
        names.append(dialect::quotedName(column));
        parameters.append(placeholder(change.values.size(), columns()[i].kind));
        assignments.append(names.last() + QLatin1String(" = ") + parameters.last());
        for (const dialect::ForeignKey &key : target.foreignKeys)
            if (dialect::sameName(key.column, column))
                change.translation.references.push_back({key, parameters.last()});
    }
    const QString name = dialect::quotedName(target.name);
    QString &sql = change.translation.sql;
    if (mode == Editing) {
        change.values.push_back(rowNumber());
        sql = QStringLiteral("UPDATE %1 SET %2").arg(name, assignments.join(u',')) + whereRow(change.values.size());
    } else if (names.isEmpty()) {
        sql = QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(name);
    } else {
        sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(name, names.join(u','), parameters.join(u','));
    }
    // Beside rows that were read belongs the row as the table has it now, with its number and what the columns made of
    // it.
    if (read) {
        QStringList all;
        for (const dialect::OutputColumn &column : columns())
            all.append(dialect::quotedName(column.name));
        all.append(dialect::quotedName(target.rowNumber));
        sql += QLatin1String(" RETURNING ") + all.join(u',');
    }
    return change;
}

QString Recordset::Private::placeholder(size_t number, dialect::ValueKind kind) const
{
    return dialect::filled(of(database.driver->language().parameter, kind), {QString::number(number)});
}

QString Recordset::Private::whereRow(size_t number) const
{
    return QStringLiteral(" WHERE %1 = %2")
        .arg(dialect::quotedName(database.schema.table(table()).rowNumber),
             placeholder(number, dialect::ValueKind::Long));
}

Value Recordset::Private::rowNumber() const { return read->at(current, int(columns().size())); }

RowStore Recordset::Private::run(const Change &change)
{
    const Driver::Prepared statement = database.driver->prepare(change.translation.sql);
    // What a change gives back stands beside rows that were read.
    RowStore changed(read && mode != Reading ? source.prepared->columnCount : 0);
    if (database.driver->run(*statement, change.values, &changed, &change.translation) == 0)
        throw EngineError(EngineError::recordDeleted, QStringLiteral("Record is deleted."));
    return changed;
}

void Recordset::addNew()
{
    d->requireChangeable();
    d->begin(Private::Adding);
}

void Recordset::edit()
{
    d->requireChangeable();
    d->requireCurrent();
    d->begin(Private::Editing);
}

void Recordset::setField(QStringView name, const Value &value)
{
    d->requireMode();
    const int column = fieldIndex(name);
    d->changes[column] = storedValue(value, d->columns()[column].kind);
}

void Recordset::cancelUpdate()
{
    d->requireMode();
    d->mode = Private::Reading;
}

void Recordset::update()
{
    d->requireMode();
    const bool anyChange = std::ranges::any_of(d->changes, [](const auto &change) { return change.has_value(); });
    if (d->mode == Private::Adding || anyChange) {
        const RowStore changed = d->run(d->pendingChange());
        if (d->read && d->mode == Private::Adding)
            d->read->append(changed);
        else if (d->read)
            d->read->replace(d->current, changed);
    }
    d->mode = Private::Reading;
}

void Recordset::remove()
{
    d->requireChangeable();
    d->requireCurrent();
    Private::Change change;
    change.translation.kind = dialect::Statement::Delete;
    change.translation.table = d->table();
    change.translation.sql = QLatin1String("DELETE FROM ") + dialect::quotedName(d->table()) + d->whereRow(1);
    change.values = {d->rowNumber()};
    d->mode = Private::Reading;
    d->run(change);
    d->read->remove(d->current);
}
