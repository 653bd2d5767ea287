#include "admin/Check.h"
#include "admin/CheckRules.h"
#include "admin/Command.h"
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
        checkCounters();
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
    void mend(const RowCheck &check);
    void checkCircles(const QString &table);
    void checkNumbers();
    void checkCounters();
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
    for (const QString &sentence : missingIn(m_database))
        found(sentence);
}

void Checker::checkRows(const RowCheck &check)
{
    const Recordset rows = m_database.openNative(
        QString("SELECT %1 FROM [%2] WHERE %3 ORDER BY %1").arg(check.fields, check.table, check.condition));
    const bool mends = m_fix && check.change && !rows.isEmpty();
    if (mends)
        mend(check);
    for (int row = 0; row < rows.recordCount(); ++row) {
        // Not by QString::arg(): a value may hold the sign itself.
        const QStringList parts = QString(check.sentence).split('%');
        QString sentence = parts.first();
        for (qsizetype field = 1; field < parts.size(); ++field)
            sentence += rows.at(row, int(field) - 1).toText() + parts[field];
        found(sentence, mends ? check.mended : "");
    }
}

void Checker::mend(const RowCheck &check)
{
    QString change = check.change;
    const bool renumbers = change.contains('%');
    if (renumbers) {
        const qint64 next = std::max(m_database.nextNumber("Tools"), m_database.nextNumber("Scrap"));
        change.replace('%', QString::number(std::max<qint64>(next, Schema::firstScrapNumber) - 1));
    }
    m_database.executeNative(QString("UPDATE [%1] SET %2 WHERE %3").arg(check.table, change, check.condition));
    // A counter does not notice the numbers that a change gives.
    if (renumbers)
        m_database.setNextNumber("Scrap",
                                 m_database.openNative("SELECT max([ID]) FROM [Scrap]").at(0, 0).toInteger() + 1);
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
    const Recordset rows = m_database.openRecordset("SELECT ID, Description, Parent FROM " + table + " WHERE ID <> 0");
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
            m_database.execute(QString("UPDATE %1 SET Parent = 0 WHERE ID = %2").arg(table).arg(members.firstKey()));
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
                QString("SELECT count(*), min([%2]) FROM [%1] WHERE CAST([%2] AS BIGINT) NOT BETWEEN -2147483648 AND "
                        "2147483647 OR [%2] <> CAST([%2] AS BIGINT)")
                    .arg(table.name, column.name));
            if (const qint64 count = wrong.at(0, 0).toInteger(); count > 0)
                found(QString("%1.%2 holds no whole number of 32 bits in %3 rows; one of them has %4.")
                          .arg(table.name, column.name)
                          .arg(count)
                          .arg(wrong.at(0, 1).toText()));
        }
    }
}

// No fault yet. A server loses numbers: those of a change that came to nothing are not given again.
void Checker::checkCounters()
{
    constexpr int enough = 200;
    for (const auto &[table, highest] :
         {std::pair("Tools", Schema::highestToolNumber), std::pair("Types", Schema::highestFolderNumber),
          std::pair("Locations", Schema::highestFolderNumber)}) {
        const qint64 next = m_database.table(table) ? m_database.nextNumber(table) : 0;
        if (next > highest - enough)
            m_lines << QString("The numbers of %1 end at %2; the next one is %3.").arg(table).arg(highest).arg(next);
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

QStringList missingIn(const Database &database)
{
    QStringList missing;
    for (const TableDefinition &expected : Schema::tables()) {
        const dialect::Table *table = database.table(expected.name);
        if (!table) {
            missing << QString("The table %1 is missing.").arg(expected.name);
            continue;
        }
        for (const TableDefinition::Column &column : expected.columns) {
            if (table->find(column.name) < 0)
                missing << QString("The column %1 of the table %2 is missing.").arg(column.name, expected.name);
        }
    }
    return missing;
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
