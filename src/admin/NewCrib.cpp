#include "admin/NewCrib.h"

#include "db/Literals.h"
#include "db/Schema.h"
#include "platform/engine/dialect/SqlText.h"

#include <algorithm>
#include <cmath>

using dialect::quotedName;

namespace {

constexpr int rowsAtATime = 500;
constexpr QLatin1String bytesMark("\\x"); // what the engine writes bytes with, as hexadecimal digits behind it

dialect::ValueKind kindOf(ImportKind kind)
{
    using dialect::ValueKind;
    switch (kind) {
    case ImportKind::Number:
        return ValueKind::Long;
    case ImportKind::YesNo:
        return ValueKind::YesNo;
    case ImportKind::Money:
        return ValueKind::Currency;
    case ImportKind::Date:
        return ValueKind::Date;
    case ImportKind::Text:
        return ValueKind::Text;
    case ImportKind::Fraction:
        return ValueKind::Number;
    case ImportKind::Bytes:
        return ValueKind::Unknown;
    }
    return {};
}

/// The crib's tables, with the columns that the old file has besides, then its others.
std::vector<TableDefinition> definitionsOf(const std::vector<ImportTable> &tables)
{
    std::vector<TableDefinition> definitions = Schema::tables();
    for (const ImportTable &table : tables) {
        auto found = std::ranges::find(definitions, table.name, &TableDefinition::name);
        if (found == definitions.end())
            found = definitions.insert(found, {.name = table.name, .columns = {}});
        for (const ImportColumn &column : table.columns) {
            if (!column.isOurs)
                found->columns.push_back({column.name, kindOf(column.kind)});
        }
    }
    return definitions;
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
        return QByteArray::fromHex(value.toText().mid(bytesMark.size()).toLatin1());
    default:
        return value.toText();
    }
}

}

NewCrib::NewCrib(Database &database, const std::vector<ImportTable> &tables) : m_database(database)
{
    keepSmall(database);
    for (const TableDefinition &table : definitionsOf(tables))
        database.createTable(table);
    // Over all rows at once they are made in half the time.
    const Recordset indexes =
        database.openNative("SELECT sql, name FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL");
    for (int i = 0; i < indexes.recordCount(); ++i) {
        m_indexes << indexes.at(i, 0).toText();
        database.executeNative("DROP INDEX " + quotedName(indexes.at(i, 1).toText()));
    }
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
    // Bytes are pictures and documents, of which few are kept in memory.
    const bool hasBytes =
        std::ranges::any_of(row, [](const JetValue &value) { return std::holds_alternative<QByteArray>(value); });
    if (hasBytes || m_rows.rowCount() >= rowsAtATime)
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
    } else if (const auto *bytes = std::get_if<QByteArray>(&value)) {
        m_rows.add(bytesMark + QString::fromLatin1(bytes->toHex()));
    } else {
        m_rows.addNull();
    }
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
    const QString rowNumber = database.table(table.name)->rowNumber;
    QStringList columns;
    for (const ImportColumn &column : table.columns)
        columns << quotedName(column.name);
    QString inOrder;
    if (!rowNumber.isEmpty()) {
        columns << rowNumber;
        inOrder = QString(" ORDER BY %1 LIMIT %2").arg(rowNumber).arg(rowsAtATime);
    }
    const QString select = "SELECT " + columns.join(',') + " FROM " + quotedName(table.name);
    QString behind;
    std::vector<JetValue> row(table.columns.size());
    for (bool isMore = true; isMore;) {
        const Recordset rows = database.openNative(select + behind + inOrder);
        for (int i = 0; i < rows.recordCount(); ++i) {
            for (size_t column = 0; column < row.size(); ++column)
                row[column] = asAppended(rows.at(i, int(column)), table.columns[column].kind);
            visit(row);
        }
        isMore = !rowNumber.isEmpty() && rows.recordCount() == rowsAtATime;
        if (isMore)
            behind = " WHERE " + rowNumber + " > " + rows.at(rowsAtATime - 1, int(row.size())).toText();
    }
}
