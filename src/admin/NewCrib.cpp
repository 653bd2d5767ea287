#include "admin/NewCrib.h"

#include "db/Literals.h"
#include "db/Schema.h"

#include <cmath>

namespace {

constexpr qsizetype longestStatement = 200'000;
constexpr int rowsAtATime = 500;
// Rows come one after the other and are seldom looked at again.
const QString smallCache = "PRAGMA cache_size = -6144";

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

// Read as decimals a fraction may lose its last bit; as 53 bits divided by a power of two it loses nothing.
QString literal(double fraction)
{
    int exponent = 0;
    const double bits = std::frexp(fraction, &exponent);
    QString text = QString("CAST(%1 AS REAL)").arg(qint64(std::ldexp(bits, 53)));
    for (exponent -= 53; exponent != 0;) {
        const int step = std::min(std::abs(exponent), 60);
        text = QString("(%1%2%3)").arg(text, exponent < 0 ? "/" : "*").arg(1LL << step);
        exponent += exponent < 0 ? step : -step;
    }
    return text;
}

QString blobLiteral(const QByteArray &bytes) { return "X'" + QString::fromLatin1(bytes.toHex()) + '\''; }

void appendLiteral(QString &statement, const JetValue &value, ImportKind kind)
{
    if (const auto *number = std::get_if<qint64>(&value)) {
        statement += QString::number(*number);
        if (kind == ImportKind::Money)
            statement += QString("/%1.0").arg(moneyUnits);
    } else if (const auto *text = std::get_if<QString>(&value)) {
        // A statement ends at a character of the code 0.
        if (text->contains(QChar(0)))
            statement += "CAST(" + blobLiteral(text->toUtf8()) + " AS TEXT)";
        else if (text->contains('\''))
            statement += quoted(*text);
        else
            statement += '\'' + *text + '\'';
    } else if (const auto *fraction = std::get_if<double>(&value)) {
        statement += literal(*fraction);
    } else if (const auto *bytes = std::get_if<QByteArray>(&value)) {
        statement += blobLiteral(*bytes);
    } else {
        statement += "NULL";
    }
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
    database.executeNative(smallCache);
    Schema::create(database);
    // The old file brings its own kinds of charge and reports.
    QString statements = "BEGIN; DELETE FROM LineItemType; DELETE FROM Reports;";
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
    if (m_table != &table)
        flush();
    m_table = &table;
    m_rows += m_rows.isEmpty() ? "(" : ",(";
    for (size_t i = 0; i < row.size(); ++i) {
        if (i > 0)
            m_rows += ',';
        appendLiteral(m_rows, row[i], table.columns[i].kind);
    }
    m_rows += ')';
    if (m_rows.size() > longestStatement)
        flush();
}

void NewCrib::flush()
{
    if (!m_rows.isEmpty())
        m_database.executeNative("INSERT INTO " + quotedName(m_table->name) + " VALUES " + m_rows);
    m_rows.clear();
}

void NewCrib::setLastNumber(const QString &table, qint64 number)
{
    m_database.executeNative(
        QString("UPDATE sqlite_sequence SET seq = max(seq, %2) WHERE name = %1;"
                "INSERT INTO sqlite_sequence SELECT %1, %2 WHERE %1 NOT IN (SELECT name FROM sqlite_sequence)")
            .arg(quoted(table))
            .arg(number));
}

void NewCrib::read(Database &database, const ImportTable &table,
                   const std::function<void(const std::vector<JetValue> &)> &visit)
{
    // A column of a foreign table may hide the name of the row's number.
    QStringList rowNumbers{"rowid", "oid", "_rowid_"};
    QStringList columns;
    for (const ImportColumn &column : table.columns) {
        rowNumbers.removeOne(column.name.toLower());
        const QString name = quotedName(column.name);
        columns << (column.kind == ImportKind::Bytes ? "iif(" + name + " IS NULL, NULL, hex(" + name + "))" : name);
    }
    const QString rowNumber = rowNumbers.value(0);
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
