#include "platform/engine/RecordsetPrivate.h"

#include "platform/engine/StoredValue.h"
#include "platform/engine/dialect/Parser.h"
#include "platform/engine/dialect/SqlText.h"
#include "platform/engine/dialect/SqliteWriter.h"

#include <sqlite3.h>

namespace {

[[noreturn]] void noCurrentRecord()
{
    throw EngineError(EngineError::noCurrentRecord, QStringLiteral("No current record."));
}

}

Recordset::Recordset(std::unique_ptr<Private> data) : d(std::move(data)) { }
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;
Recordset::~Recordset() = default;

const RowStore &Recordset::Private::read()
{
    if (!rows) {
        Database::Private::Kept &kept = database->ready(statement);
        RowStore store(sqlite3_column_count(kept.statement.get()));
        database->connection.run(kept.statement.get(), kept.values, &store);
        rows = std::move(store);
    }
    return *rows;
}

void Recordset::Private::requireCurrent()
{
    if (current < 0 || current >= count())
        noCurrentRecord();
}

void Recordset::Private::requireChangeable() const
{
    if (table.isEmpty())
        throw EngineError(EngineError::readOnly, QStringLiteral("Cannot update. Database or object is read-only."));
}

void Recordset::Private::begin(Mode wanted)
{
    requireChangeable();
    mode = wanted;
    changes.assign(columns.size(), std::nullopt);
}

void Recordset::Private::moveTo(int row)
{
    mode = Reading;
    current = row;
}

int Recordset::recordCount() const { return d->count(); }

bool Recordset::atBeginning() const { return d->current < 0 || d->count() == 0; }

bool Recordset::atEnd() const { return d->current >= d->count(); }

void Recordset::moveFirst()
{
    if (isEmpty())
        noCurrentRecord();
    d->moveTo(0);
}

void Recordset::moveLast()
{
    if (isEmpty())
        noCurrentRecord();
    d->moveTo(d->count() - 1);
}

void Recordset::moveNext()
{
    if (atEnd())
        noCurrentRecord();
    d->moveTo(d->current + 1);
}

void Recordset::movePrevious()
{
    if (atBeginning())
        noCurrentRecord();
    d->moveTo(d->current - 1);
}

int Recordset::position() const { return d->current; }

void Recordset::setPosition(int row)
{
    if (row < 0 || row >= d->count())
        noCurrentRecord();
    d->moveTo(row);
}

int Recordset::fieldCount() const { return int(d->columns.size()); }

QString Recordset::fieldName(int column) const { return d->columns.at(column).name; }

int Recordset::fieldIndex(QStringView name) const
{
    for (size_t i = 0; i < d->columns.size(); ++i)
        if (dialect::sameName(d->columns[i].name, name))
            return int(i);
    throw EngineError(EngineError::noSuchField, QStringLiteral("Item not found in this collection: '%1'.").arg(name));
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
    return d->rows->at(d->current, column);
}

Value Recordset::field(QStringView name) const { return field(fieldIndex(name)); }

Value Recordset::at(int row, int column) const
{
    if (row < 0 || row >= d->count() || column < 0 || column >= fieldCount())
        noCurrentRecord();
    return d->rows->at(row, column);
}

bool Recordset::findFirst(const QString &criteria)
{
    const dialect::ExpressionPtr condition = dialect::parseCondition(criteria);
    const Connection::Prepared statement =
        d->database->connection.prepare(dialect::translateCondition(*condition, d->columns));
    for (int row = 0; row < d->count(); ++row) {
        std::vector<Value> fields;
        for (int column = 0; column < fieldCount(); ++column)
            fields.push_back(d->rows->at(row, column));
        RowStore met(1);
        d->database->connection.run(statement.get(), fields, &met);
        if (met.at(0, 0).toBool()) {
            d->moveTo(row);
            return true;
        }
    }
    return false;
}

void Recordset::addNew() { d->begin(Private::Adding); }

void Recordset::edit()
{
    d->requireChangeable();
    d->requireCurrent();
    d->begin(Private::Editing);
}

void Recordset::setField(QStringView name, const Value &value)
{
    const int column = fieldIndex(name);
    if (d->mode == Private::Reading)
        throw EngineError(EngineError::updateWithoutEdit,
                          QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    d->changes[column] = storedValue(value, d->columns[column].kind);
}

void Recordset::cancelUpdate() { d->mode = Private::Reading; }

RowStore Recordset::Private::store(const dialect::Translation &translation, const std::vector<Value> &values)
{
    Connection &connection = database->connection;
    const Connection::Prepared statement = connection.prepare(translation.sql);
    RowStore stored(sqlite3_column_count(statement.get()));
    if (connection.run(statement.get(), values, &stored, &translation) == 0)
        throw EngineError(EngineError::recordDeleted, QStringLiteral("Record is deleted."));
    return stored;
}

void Recordset::update()
{
    if (d->mode == Private::Reading)
        throw EngineError(EngineError::updateWithoutEdit,
                          QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    const bool adding = d->mode == Private::Adding;
    const dialect::Table &table = *d->database->schema.find(d->table);
    dialect::Translation translation;
    translation.kind = adding ? dialect::Statement::Insert : dialect::Statement::Update;
    translation.table = d->table;
    QStringList names, parameters, assignments, columns;
    std::vector<Value> values;
    for (size_t i = 0; i < d->columns.size(); ++i) {
        columns.append(dialect::quotedName(d->columns[i].name));
        if (!d->changes[i])
            continue;
        values.push_back(*d->changes[i]);
        names.append(columns.last());
        parameters.append(u'?' + QString::number(values.size()));
        assignments.append(names.last() + QLatin1String(" = ") + parameters.last());
        for (const dialect::ForeignKey &key : table.foreignKeys)
            if (dialect::sameName(key.column, d->columns[i].name))
                translation.references.push_back({key, parameters.last()});
    }
    if (!adding && values.empty()) {
        d->mode = Private::Reading;
        return;
    }
    if (adding && values.empty()) {
        translation.sql =
            QLatin1String("INSERT INTO ") + dialect::quotedName(d->table) + QLatin1String(" DEFAULT VALUES");
    } else if (adding) {
        translation.sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                              .arg(dialect::quotedName(d->table), names.join(u','), parameters.join(u','));
    } else {
        values.push_back(d->rows->at(d->current, fieldCount()));
        translation.sql =
            QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?%3")
                .arg(dialect::quotedName(d->table), assignments.join(u','), QString::number(values.size()));
    }
    translation.sql += QLatin1String(" RETURNING ") + columns.join(u',') + QLatin1String(", rowid");
    const RowStore stored = d->store(translation, values);
    if (!adding)
        d->rows->replace(d->current, stored);
    else if (d->rows)
        d->rows->append(stored);
    d->mode = Private::Reading;
}

void Recordset::remove()
{
    d->requireChangeable();
    d->requireCurrent();
    dialect::Translation translation;
    translation.kind = dialect::Statement::Delete;
    translation.table = d->table;
    translation.sql = QStringLiteral("DELETE FROM %1 WHERE rowid = ?1").arg(dialect::quotedName(d->table));
    d->store(translation, {d->rows->at(d->current, fieldCount())});
    d->rows->remove(d->current);
    d->mode = Private::Reading;
}
