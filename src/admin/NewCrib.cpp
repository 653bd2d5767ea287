#include "admin/NewCrib.h"

#include "db/Literals.h"
#include "db/Schema.h"

#include <cmath>

namespace {

constexpr int rowsAtATime = 500;

QString quotedName(const QString &name) { return '"' + QString(name).replace('"', "\"\"") + '"'; }

QString declaredType(ImportKind kind)
{
    switch (kind) {
    case ImportKind::Number:
        return "LONG";
    case ImportKind::YesNo:
        return "YESNO";
    case ImportKind::Money:
        return "CURRENCY";
    case ImportKind::Date:
        return "DATETIME";
    case ImportKind::Text:
        return "TEXT";
    case ImportKind::Fraction:
        return "DOUBLE";
    case ImportKind::Bytes:
        return "BLOB";
    }
    return {};
}

QString definition(const ImportColumn &column) { return quotedName(column.name) + ' ' + declaredType(column.kind); }

/// The name by which rows have their numbers, which a column of a foreign table may hide.
QString rowNumberOf(const ImportTable &table)
{
    QStringList names{"rowid", "oid", "_rowid_"};
    for (const ImportColumn &column : table.columns)
        names.removeOne(column.name.toLower());
    return names.value(0);
}

JetValue asAppended(const Value &value, ImportKind kind)
{
    if (value.isNull())
        return {};
    switch (kind) {
    case ImportKind::Number:
    case ImportKind::YesNo:
        return value.toInteger();
    case ImportKind::Money:
        return qint64(std::nearbyint(value.toNumber() * moneyUnits));
    case ImportKind::Fraction:
        return value.toNumber();
    case ImportKind::Bytes:
        return QByteArray::fromHex(value.toText().toLatin1());
    default:
        return value.toText();
    }
}

}

NewCrib::NewCrib(Database &database, const std::vector<ImportTable> &tables) : m_database(database)
{
    keepSmall(database);
    Schema::create(database);
    // Over all rows at once they are made in half the time.
    QStringList dropped;
    const Recordset indexes =
        database.openNative("SELECT sql, name FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL");
    for (int i = 0; i < indexes.recordCount(); ++i) {
        m_indexes << indexes.at(i, 0).toText();
        dropped << "DROP INDEX " + quotedName(indexes.at(i, 1).toText()) + ';';
    }
    // The old file brings its own kinds of charge and reports.
    QString statements = "BEGIN; DELETE FROM LineItemType; DELETE FROM Reports;" + dropped.join(' ');
    for (const ImportTable &table : tables) {
        QStringList others;
        for (const ImportColumn &column : table.columns) {
            if (!column.isOurs)
                others << definition(column);
        }
        if (!table.isOurs)
            statements += QString("CREATE TABLE %1 (%2);").arg(quotedName(table.name), others.join(','));
        for (const QString &other : table.isOurs ? others : QStringList())
            statements += QString("ALTER TABLE %1 ADD COLUMN %2;").arg(quotedName(table.name), other);
    }
    database.executeNative(statements + "COMMIT");
}

void NewCrib::append(const ImportTable &table, const std::vector<JetValue> &row)
{
    if (m_table != &table) {
        flush();
        m_table = &table;
        m_rows = RowStore(int(table.columns.size()));
    }
    m_rows.beginRow();
    for (size_t i = 0; i < row.size(); ++i)
        addCell(row[i], table.columns[i].kind);
    for (size_t i = 0; i < row.size(); ++i) {
        if (const auto *bytes = std::get_if<QByteArray>(&row[i]))
            storeBytes(table, table.columns[i], *bytes);
    }
    if (m_rows.rowCount() >= rowsAtATime)
        flush();
}

void NewCrib::addCell(const JetValue &value, ImportKind kind)
{
    if (const auto *text = std::get_if<QString>(&value)) {
        const QByteArray characters = text->toUtf8();
        m_rows.addText(characters.constData(), characters.size());
    } else if (const auto *number = std::get_if<qint64>(&value)) {
        if (kind == ImportKind::Money)
            m_rows.addFraction(double(*number) / moneyUnits);
        else
            m_rows.addInteger(*number);
    } else if (const auto *fraction = std::get_if<double>(&value)) {
        m_rows.addFraction(*fraction);
    } else {
        m_rows.addNull();
    }
}

// The engine's rows take no bytes. They are rare, and put into the row once it is stored.
void NewCrib::storeBytes(const ImportTable &table, const ImportColumn &column, const QByteArray &bytes)
{
    flush();
    m_database.executeNative("UPDATE " + quotedName(table.name) + " SET " + quotedName(column.name) + " = X'"
                             + QString::fromLatin1(bytes.toHex()) + "' WHERE " + rowNumberOf(table)
                             + " = last_insert_rowid()");
}

void NewCrib::flush()
{
    if (m_rows.rowCount() > 0)
        m_database.append(m_table->name, m_rows);
    m_rows.clear();
}

void NewCrib::finish()
{
    flush();
    m_database.executeNative(m_indexes.join(';'));
    m_database.analyze();
}

void NewCrib::keepSmall(Database &database) { database.executeNative("PRAGMA cache_size = -6144"); }

void NewCrib::setLastNumber(const QString &table, qint64 number)
{
    if (number >= m_database.nextNumber(table))
        m_database.setNextNumber(table, number + 1);
}

void NewCrib::read(Database &database, const ImportTable &table,
                   const std::function<void(const std::vector<JetValue> &)> &visit)
{
    const QString rowNumber = rowNumberOf(table);
    QStringList columns;
    for (const ImportColumn &column : table.columns) {
        const QString name = quotedName(column.name);
        columns << (column.kind == ImportKind::Bytes ? "iif(" + name + " IS NULL, NULL, hex(" + name + "))" : name);
    }
    const QString select = "SELECT " + rowNumber + ',' + columns.join(',') + " FROM " + quotedName(table.name);
    const QString inOrder = " ORDER BY " + rowNumber + " LIMIT " + QString::number(rowsAtATime);
    QString behind;
    std::vector<JetValue> row(table.columns.size());
    for (bool isMore = true; isMore;) {
        const Recordset rows = database.openNative(select + behind + inOrder);
        for (int i = 0; i < rows.recordCount(); ++i) {
            for (size_t column = 0; column < row.size(); ++column)
                row[column] = asAppended(rows.at(i, int(column) + 1), table.columns[column].kind);
            visit(row);
        }
        isMore = rows.recordCount() == rowsAtATime;
        if (isMore)
            behind = " WHERE " + rowNumber + " > " + rows.at(rowsAtATime - 1, 0).toText();
    }
}
