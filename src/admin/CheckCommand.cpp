#include "admin/Check.h"
#include "admin/CheckRules.h"
#include "admin/Command.h"
#include "db/Literals.h"
#include "db/Schema.h"
#include "platform/engine/Workspace.h"

#include <QMap>

#include <algorithm>
#include <optional>

namespace {

/// Goes through the faults of one file and mends what it may.
class Checker
{
public:
    Checker(Database &database, bool fix) : m_database(database), m_fix(fix) { }

    void run()
    {
        checkFile();
        checkContent();
    }

    void checkContent()
    {
        checkTables();
        if (m_found > 0)
            return; // The rows of such a file tell nothing.
        for (const RowCheck &check : rowChecks)
            checkRows(check);
        checkCircles("Types");
        checkCircles("Locations");
        checkNumbers();
    }

    const QStringList &lines() const { return m_lines; }
    int left() const { return m_found - m_mended; }

    QString report() const
    {
        QString summary = m_found == 0 ? QString("No faults found.") : QString("Faults found: %1.").arg(m_found);
        if (m_fix && m_found > 0)
            summary += QString(" Mended: %1. Left: %2.").arg(m_mended).arg(left());
        return (m_lines + QStringList(summary)).join('\n') + '\n';
    }

private:
    void checkFile();
    void checkTables();
    void checkRows(const RowCheck &check);
    void checkCircles(const QString &table);
    void checkNumbers();
    void found(const QString &fault, const QString &mended = {});

    Database &m_database;
    bool m_fix;
    QStringList m_lines;
    int m_found = 0;
    int m_mended = 0;
};

void Checker::found(const QString &fault, const QString &mended)
{
    ++m_found;
    m_mended += !mended.isEmpty();
    m_lines << (mended.isEmpty() ? fault : fault + ' ' + mended);
}

void Checker::checkFile()
{
    for (const QString &finding : m_database.damage())
        found("The file is damaged, use a backup: " + finding);
}

void Checker::checkTables()
{
    for (const TableDefinition &expected : Schema::tables()) {
        const dialect::Table *table = m_database.table(expected.name);
        if (!table) {
            found(QString("The table %1 is missing.").arg(expected.name));
            continue;
        }
        for (const TableDefinition::Column &column : expected.columns) {
            if (table->find(column.name) < 0)
                found(QString("The column %1 of the table %2 is missing.").arg(column.name, expected.name));
        }
    }
}

void Checker::checkRows(const RowCheck &check)
{
    const Recordset rows =
        m_database.openNative(QStringList{"SELECT printf(", quoted(check.sentence), ",", check.fields, ") FROM",
                                          check.table, "WHERE", check.condition, "ORDER BY", check.fields}
                                  .join(' '));
    const bool mends = m_fix && check.change && !rows.isEmpty();
    if (mends)
        m_database.executeNative(
            QStringList{"UPDATE", check.table, "SET", check.change, "WHERE", check.condition}.join(' '));
    for (int row = 0; row < rows.recordCount(); ++row)
        found(rows.at(row, 0).toText(), mends ? check.mended : "");
}

void Checker::checkCircles(const QString &table)
{
    struct Folder {
        QString name;
        qint64 parent;
        std::optional<qint64> seenFrom = std::nullopt;
    };
    QMap<qint64, Folder> folders;
    // The top level has the number 0. A folder of that number would lie in itself; it is told by its number already.
    const Recordset rows = m_database.openNative("SELECT ID, Description, Parent FROM " + table + " WHERE ID <> 0");
    for (int row = 0; row < rows.recordCount(); ++row)
        folders.insert(rows.at(row, 0).toInteger(), {rows.at(row, 1).toText(), rows.at(row, 2).toInteger()});

    for (const qint64 start : folders.keys()) {
        qint64 at = start;
        for (auto folder = folders.find(at); folder != folders.end() && !folder->seenFrom; folder = folders.find(at)) {
            folder->seenFrom = start;
            at = folder->parent;
        }
        // Only a circle leads back to a folder of the same walk.
        if (!folders.contains(at) || folders[at].seenFrom != start)
            continue;
        QMap<qint64, QString> members;
        for (; !members.contains(at); at = folders[at].parent)
            members.insert(at, QString("%1 \"%2\"").arg(at).arg(folders[at].name));
        if (m_fix)
            m_database.executeNative(
                QString("UPDATE %1 SET Parent = 0 WHERE ID = %2").arg(table).arg(members.firstKey()));
        found(QString("%1 lie below one another in a circle; the tree does not show them: %2.")
                  .arg(table, members.values().join(", ")),
              m_fix ? QString("Moved %1 to the top level.").arg(members.firstKey()) : QString());
    }
}

void Checker::checkNumbers()
{
    for (const TableDefinition &table : Schema::tables()) {
        for (const TableDefinition::Column &column : table.columns) {
            if (column.kind != dialect::ValueKind::Long)
                continue;
            const Recordset wrong = m_database.openNative(
                QString("SELECT count(*), min([%2]) FROM [%1] WHERE [%2] IS NOT NULL AND (typeof([%2]) "
                        "<> 'integer' OR [%2] NOT BETWEEN -2147483648 AND 2147483647)")
                    .arg(table.name, column.name));
            if (const qint64 count = wrong.at(0, 0).toInteger(); count > 0)
                found(QString("%1.%2 holds no whole number of 32 bits in %3 rows; one of them has %4.")
                          .arg(table.name, column.name)
                          .arg(count)
                          .arg(wrong.at(0, 1).toText()));
        }
    }
}

int check(const QCommandLineParser &arguments, QTextStream &out)
{
    const auto database = Workspace::first().openDatabase(arguments.positionalArguments().constFirst());
    Checker checker(*database, arguments.isSet("fix"));
    if (arguments.isSet("fix")) {
        Transaction transaction(*database);
        checker.run();
        transaction.commit();
    } else {
        const ReadScope scope(*database);
        checker.run();
    }
    out << checker.report();
    return checker.left() == 0 ? 0 : 1;
}

}

QStringList faultsIn(Database &database)
{
    Checker checker(database, false);
    const ReadScope scope(database);
    checker.checkContent();
    return checker.lines();
}

Command checkCommand()
{
    const QCommandLineOption fix("fix", "Mends what is safe to mend, in one transaction, and says what it did");
    const QString details =
        "Folders without a parent or in circles, loans and tools that contradict each other, unknown references,\n"
        "numbers out of range or met twice, names with quotes, damage of the file itself. The exit status is 1 when a\n"
        "fault is found and not mended.";
    return {.name = "check",
            .operands = {"FILE"},
            .options = {fix},
            .summary = "Looks for faults that the engine cannot prevent",
            .details = details,
            .run = check};
}
