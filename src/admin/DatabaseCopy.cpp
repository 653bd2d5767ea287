#include "admin/DatabaseCopy.h"

#include "admin/Check.h"
#include "admin/Refusal.h"
#include "admin/Shortened.h"
#include "db/Schema.h"
#include "platform/engine/dialect/SqlText.h"
#include "platform/engine/driver/StoredValue.h"

#include <algorithm>
#include <optional>

namespace {

constexpr int rowsAtATime = 20'000;
constexpr int picturesAtATime = 100;
constexpr int sentencesShown = 20;
constexpr int charactersShown = 40;

using dialect::quotedName;
using dialect::sameName;
using dialect::ValueKind;

void refuse(const QString &sentence) { throw Refusal(1, sentence + " Nothing was copied."); }

/// The crib's tables, with the columns that the suite has added, then the suite's others.
std::vector<TableDefinition> tablesOf(const Database &database)
{
    std::vector<TableDefinition> tables = Schema::tables();
    for (const dialect::Table &found : database.tables()) {
        const auto hasName = [&](const TableDefinition &table) { return sameName(table.name, found.name); };
        auto table = std::ranges::find_if(tables, hasName);
        const bool isOthers = table == tables.end();
        if (isOthers)
            table = tables.insert(table, {.name = found.name, .columns = {}});
        for (const dialect::Column &column : found.columns) {
            const auto isColumn = [&](const TableDefinition::Column &known) {
                return sameName(known.name, column.name);
            };
            if (std::ranges::any_of(table->columns, isColumn))
                continue;
            const bool isCounter = isOthers && column.name == found.counter;
            table->columns.push_back(
                {column.name, column.kind, isCounter ? TableDefinition::Counter : TableDefinition::Optional});
            if (column.indexed && !isCounter)
                table->indexes.push_back({column.name});
        }
    }
    return tables;
}

/// Looks in one table for rows that another database, which keeps its rules, would refuse.
class RuleCheck
{
public:
    RuleCheck(Database &database, const TableDefinition &table) : m_database(database), m_table(table) { }

    QStringList run(bool onServer)
    {
        for (const TableDefinition::Column &column : m_table.columns) {
            if (column.rule != TableDefinition::Optional)
                tell("[" + column.name + "] IS NULL", "have no " + column.name);
            if (column.rule == TableDefinition::Key || column.rule == TableDefinition::Counter)
                requireOnce({.column = column.name});
        }
        for (const dialect::ForeignKey &key : m_table.foreignKeys)
            requirePartner(key);
        // What a file's rules leave to the programs.
        if (onServer && !m_table.parent.isEmpty())
            requirePartner({m_table.parent, m_table.name, m_table.columns.front().name}, "0");
        for (const TableDefinition::Unique &unique :
             onServer ? m_table.uniques : std::vector<TableDefinition::Unique>())
            requireOnce(unique);
        return m_sentences;
    }

private:
    void tell(const QString &condition, const QString &what)
    {
        const qint64 rows =
            m_database.openNative(QString("SELECT count(*) FROM [%1] WHERE %2").arg(m_table.name, condition))
                .at(0, 0)
                .toInteger();
        if (rows > 0)
            m_sentences << QString("%1: %2 rows %3.").arg(m_table.name).arg(rows).arg(what);
    }

    void requirePartner(const dialect::ForeignKey &key, const QString &none = "NULL")
    {
        tell(QString("NULLIF([%1], %2) NOT IN (SELECT [%3] FROM [%4])")
                 .arg(key.column, none, key.parentColumn, key.parentTable),
             QString("have a %1 that is not in %2").arg(key.column, key.parentTable));
    }

    void requireOnce(const TableDefinition::Unique &unique)
    {
        const QString where = unique.where.isEmpty() ? QString() : QString(" AND [%1] <> 0").arg(unique.where);
        const QString day =
            unique.day.isEmpty() ? QString() : QString(", substr(CAST([%1] AS TEXT), 1, 10)").arg(unique.day);
        const Recordset rows =
            m_database.openNative(QString("SELECT [%1], count(*)%4 FROM [%2] WHERE [%1] IS NOT NULL%3 GROUP BY [%1]%4 "
                                          "HAVING count(*) > 1 ORDER BY [%1]")
                                      .arg(unique.column, m_table.name, where, day));
        for (int row = 0; row < rows.recordCount(); ++row) {
            QString sentence =
                QString("%1: %2 rows have the %3 ").arg(m_table.name, rows.at(row, 1).toText(), unique.column)
                + rows.at(row, 0).toText();
            if (!unique.where.isEmpty())
                sentence += " and are " + unique.where;
            m_sentences << (unique.day.isEmpty() ? sentence : sentence + " on " + rows.at(row, 2).toText()) + '.';
        }
    }

    Database &m_database;
    const TableDefinition &m_table;
    QStringList m_sentences;
};

void requireCopyable(Database &from, bool toServer)
{
    if (const QStringList missing = missingIn(from); !missing.isEmpty())
        refuse(missing.join('\n'));
    if (const QStringList damage = from.damage(); !damage.isEmpty())
        refuse("The file is damaged, use a backup: " + damage.first());
    QStringList sentences;
    for (const TableDefinition &table : Schema::tables())
        sentences += RuleCheck(from, table).run(toServer);
    if (!sentences.isEmpty())
        refuse(shortened(sentences, sentencesShown, "There are %1 more of these.").join('\n')
               + "\nThe new database would refuse these rows; vorlane-admin check tells more.");
}

/// Copies the rows of one table.
class RowCopy
{
public:
    RowCopy(Database &from, Database &to, const TableDefinition &table)
        : m_from(from),
          m_to(to),
          m_table(table),
          m_columns(to.table(table.name)->columns),
          m_rowNumber(from.table(table.name)->rowNumber)
    {
        QStringList names;
        for (const dialect::Column &column : m_columns)
            names << quotedName(column.name);
        if (!m_rowNumber.isEmpty())
            names << quotedName(m_rowNumber);
        m_select = "SELECT " + names.join(", ") + " FROM " + quotedName(table.name);
    }

    /// @returns how many there are.
    qint64 run(const std::function<void(const QString &)> &progress)
    {
        // Rows that refer to others of the same table arrive together with those.
        const bool hasBytes =
            std::ranges::find(m_columns, ValueKind::Unknown, &dialect::Column::kind) != m_columns.end();
        const int atATime = hasBytes ? picturesAtATime : rowsAtATime;
        const bool inParts = m_table.parent.isEmpty() && !m_rowNumber.isEmpty();
        const QString inOrder = m_rowNumber.isEmpty() ? QString() : " ORDER BY " + quotedName(m_rowNumber);
        const QString part = inParts ? " LIMIT " + QString::number(atATime) : QString();
        qint64 copied = 0;
        QString behind;
        for (bool isMore = true; isMore;) {
            const Recordset rows = m_from.openNative(m_select + behind + inOrder + part);
            copyPart(rows);
            copied += rows.recordCount();
            progress(QString("%1: %2 rows").arg(m_table.name).arg(copied));
            isMore = inParts && rows.recordCount() == atATime;
            if (isMore)
                behind =
                    " WHERE " + quotedName(m_rowNumber) + " > " + rows.at(atATime - 1, int(m_columns.size())).toText();
        }
        for (Database *database : {&m_from, &m_to}) {
            const qint64 counted =
                database->openNative("SELECT count(*) FROM " + quotedName(m_table.name)).at(0, 0).toInteger();
            if (counted != copied)
                refuse(QString("%1: of %2 rows %3 were stored.").arg(m_table.name).arg(copied).arg(counted));
        }
        return copied;
    }

private:
    void copyPart(const Recordset &rows)
    {
        RowStore copies(int(m_columns.size()));
        for (int row = 0; row < rows.recordCount(); ++row) {
            copies.beginRow();
            for (size_t column = 0; column < m_columns.size(); ++column) {
                const Value value = rows.at(row, int(column));
                const std::optional<Value> stored = storedAs(value, m_columns[column].kind);
                if (!stored)
                    refuse(QString("%1.%2, row %3: '%4' does not fit into a column of this kind.")
                               .arg(m_table.name, m_columns[column].name,
                                    m_rowNumber.isEmpty() ? QString() : rows.at(row, int(m_columns.size())).toText(),
                                    value.toText().left(charactersShown)));
                copies.add(*stored);
            }
        }
        m_to.append(m_table.name, copies);
    }

    /// `value` as the program itself would have stored it, nothing where that is something else; other programs may
    /// have put anything into a file.
    std::optional<Value> storedAs(const Value &value, ValueKind kind) const
    {
        if (value.isNull())
            return value;
        try {
            const Value stored = storedValue(value, kind);
            const bool isOther = kind == ValueKind::Long && stored.toNumber() != value.toNumber();
            // A server's texts have no such character.
            const bool isCut = kind == ValueKind::Text && m_to.isRemote() && stored.toText().contains(QChar::Null);
            return isOther || isCut ? std::nullopt : std::optional(stored);
        } catch (const EngineError &) {
            return {};
        }
    }

    Database &m_from;
    Database &m_to;
    const TableDefinition &m_table;
    const std::vector<dialect::Column> &m_columns;
    QString m_rowNumber;
    QString m_select;
};

}

std::vector<CopiedTable> copyDatabase(Database &from, Database &to,
                                      const std::function<void(const QString &)> &progress)
{
    const ReadScope scope(from);
    progress("Checking");
    requireCopyable(from, to.isRemote());
    const std::vector<TableDefinition> tables = tablesOf(from);
    for (const TableDefinition &table : tables)
        to.createTable(table);
    std::vector<CopiedTable> copied;
    for (const TableDefinition &table : tables) {
        copied.push_back({table.name, RowCopy(from, to, table).run(progress)});
        if (const bool counts = !to.table(table.name)->counter.isEmpty();
            counts && from.nextNumber(table.name) > to.nextNumber(table.name))
            to.setNextNumber(table.name, from.nextNumber(table.name));
    }
    progress("Learning how the rows lie");
    to.analyze();
    return copied;
}
