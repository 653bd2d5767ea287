#include "admin/Command.h"
#include "db/Literals.h"
#include "db/Schema.h"
#include "platform/engine/Workspace.h"

#include <QMap>

#include <algorithm>
#include <optional>

namespace {

/// A kind of fault: the rows of `table` that meet `condition`, each told by `sentence` over
/// `fields`. Where it is safe, `change` mends all of them.
struct Check {
    const char *table;
    const char *condition;
    const char *sentence;
    const char *fields;
    const char *change = nullptr;
    const char *mended = nullptr;
};

// In this order each change leaves nothing for the ones above it. What an ordinary deletion leaves is no fault: a
// scrapped tool keeps the numbers of its type, location and reason, and its loans keep its own number.
constexpr Check checks[] = {
    {"Types", "Parent IS NOT 0 AND NOT EXISTS (SELECT 1 FROM Types P WHERE P.ID = Types.Parent)",
     "Type %d \"%s\" lies below type %d, which does not exist; the tree does not show it.", "ID, Description, Parent",
     "Parent = 0", "Moved to the top level."},
    {"Locations", "Parent IS NOT 0 AND NOT EXISTS (SELECT 1 FROM Locations P WHERE P.ID = Locations.Parent)",
     "Location %d \"%s\" lies below location %d, which does not exist; the tree does not show it.",
     "ID, Description, Parent", "Parent = 0", "Moved to the top level."},

    {"CheckOutIn", "Active <> 0 AND Tool_Id NOT IN (SELECT ID FROM Tools) AND Tool_Id IN (SELECT ToolID FROM Scrap)",
     "Loan %d of tool %d \"%s\" is still open, but the tool is scrapped.", "ID, Tool_Id, CheckOutDesc",
     "Active = 0, DateIn = (SELECT max(ScrapDate) FROM Scrap WHERE ToolID = Tool_Id)",
     "Closed as of the day it was scrapped."},
    {"CheckOutIn",
     "Active <> 0 AND EXISTS (SELECT 1 FROM CheckOutIn Later WHERE Later.Tool_Id = CheckOutIn.Tool_Id AND "
     "Later.Active <> 0"
     " AND (ifnull(Later.DateOut, ''), Later.ID) > (ifnull(CheckOutIn.DateOut, ''), CheckOutIn.ID))",
     "Loan %d of tool %d \"%s\" is still open, but the tool has gone out again since.", "ID, Tool_Id, CheckOutDesc",
     "Active = 0, DateIn = (SELECT min(Later.DateOut) FROM CheckOutIn Later WHERE Later.Tool_Id = CheckOutIn.Tool_Id"
     " AND (Later.DateOut, Later.ID) > (ifnull(CheckOutIn.DateOut, ''), CheckOutIn.ID))",
     "Closed as of the next loan."},
    {"Tools", "Out <> 0 AND NOT EXISTS (SELECT 1 FROM CheckOutIn WHERE Tool_Id = Tools.ID AND Active <> 0)",
     "Tool %d \"%s\" is marked as out, but has no open loan.", "ID, Description", "Out = 0", "Marked as in the crib."},
    {"Tools", "Out = 0 AND EXISTS (SELECT 1 FROM CheckOutIn WHERE Tool_Id = Tools.ID AND Active <> 0)",
     "Tool %d \"%s\" has an open loan, but is not marked as out.", "ID, Description", "Out = -1", "Marked as out."},

    {"CheckOutIn",
     "Tool_Id NOT IN (SELECT ID FROM Tools UNION SELECT ToolID FROM Scrap WHERE ToolID IS NOT NULL) GROUP BY Tool_Id",
     "Tool %d \"%s\" has %d loans (%d open), but is neither in the crib nor scrapped; purging a scrap record deletes "
     "the tool "
     "of the record's own number as well.",
     "Tool_Id, min(CheckOutDesc), count(*), sum(Active <> 0)"},
    {"Tools", "Type NOT IN (SELECT ID FROM Types)", "Tool %d \"%s\" is of type %d, which does not exist.",
     "ID, Description, Type"},
    {"Tools", "Location NOT IN (SELECT ID FROM Locations)", "Tool %d \"%s\" is in location %d, which does not exist.",
     "ID, Description, Location"},
    {"CheckOutIn", "ifnull(Employee, '') NOT IN (SELECT CAST(EmpID AS TEXT) FROM Employee) GROUP BY Employee",
     "Employee \"%s\" does not exist, but has loans: %d.", "Employee, count(*)"},
    {"Scrap", "ifnull(Employee, 0) NOT IN (SELECT EmpID FROM Employee) GROUP BY Employee",
     "Employee \"%s\" does not exist, but has scrapped tools: %d.", "Employee, count(*)"},
    {"CheckOutIn", "ifnull(LineItemTypeId, 0) NOT IN (SELECT [Index] FROM LineItemType) GROUP BY LineItemTypeId",
     "There is no kind of charge %d, but loans have it: %d.", "LineItemTypeId, count(*)"},
    {"Scrap", "LineItemTypeId IS NULL",
     "Scrap record %d \"%s\" has no kind of charge; the tree of scrapped tools ends there.", "ID, Description"},
    {"Scrap", "LineItemTypeId NOT IN (SELECT [Index] FROM LineItemType)",
     "Scrap record %d \"%s\" has the kind of charge %d, which does not exist; the tree of scrapped tools ends there.",
     "ID, Description, LineItemTypeId"},
    {"CheckOutIn",
     "LineItemTypeId = 4 AND ifnull(JobOrOH, 0) NOT IN (SELECT JobNo FROM Job UNION SELECT ifnull(Jobno, 0) FROM "
     "JobVorlane)"
     " GROUP BY JobOrOH",
     "There is no job %d, but loans are charged to it: %d.", "JobOrOH, count(*)"},
    // A loan on an operation called by a number is stored with that number.
    {"CheckOutIn",
     "LineItemTypeId = 5 AND ifnull(JobOrOH, 0) NOT IN (SELECT OperNo FROM Operation)"
     " AND CAST(JobOrOH AS TEXT) NOT IN (SELECT ifnull(Description, '') FROM Operation) GROUP BY JobOrOH",
     "There is no operation %d, but loans are charged to it: %d.", "JobOrOH, count(*)"},
    // Without the suite a scrapped tool is charged to a row of the program's own job list, by the row's number.
    {"Scrap",
     "LineItemTypeId = 4 AND ifnull(JobOrOH, 0) NOT IN"
     " (SELECT JobNo FROM Job UNION SELECT ID FROM JobVorlane UNION SELECT ifnull(Jobno, 0) FROM JobVorlane) GROUP BY "
     "JobOrOH",
     "There is no job %d, but scrapped tools are charged to it: %d.", "JobOrOH, count(*)"},
    {"Scrap", "LineItemTypeId = 5 AND ifnull(JobOrOH, 0) NOT IN (SELECT OperNo FROM Operation) GROUP BY JobOrOH",
     "There is no operation %d, but scrapped tools are charged to it: %d; the tree of scrapped tools cannot be shown.",
     "JobOrOH, count(*)"},
    {"Scrap", "JobOrOH IS NOT NULL GROUP BY JobOrOH HAVING count(DISTINCT LineItemTypeId) > 1",
     "Tools were scrapped on a job and on an operation of the same number %d; the tree of scrapped tools cannot be "
     "shown.",
     "JobOrOH"},

    {"Types", "ID NOT BETWEEN 1 AND 32767",
     "Type %d \"%s\" has a number outside 1 to 32767; the tree cannot show it, nor what lies in it.",
     "ID, Description"},
    {"Locations", "ID NOT BETWEEN 1 AND 32767",
     "Location %d \"%s\" has a number outside 1 to 32767; the tree cannot show it, nor what lies in it.",
     "ID, Description"},
    {"Tools", "ID NOT BETWEEN 1 AND 32767",
     "Tool %d \"%s\" has a number outside 1 to 32767; it cannot be lent or scrapped.", "ID, Description"},
    {"Scrap", "ToolID NOT BETWEEN 1 AND 32767",
     "Scrap record %d \"%s\" is of tool %d, a number outside 1 to 32767; restored, it could not be lent.",
     "ID, Description, ToolID"},
    {"Scrap", "ID IN (SELECT ID FROM Tools)",
     "Scrap record %d \"%s\" has the number of a tool in the crib; purging the record would delete that tool as well.",
     "ID, Description", "ID = ID + (SELECT max(16383, max(seq)) FROM sqlite_sequence WHERE name IN ('Tools', 'Scrap'))",
     "Given a number that no tool has."},
    {"Scrap", "ToolID IN (SELECT ID FROM Tools)",
     "Scrap record %d \"%s\" is of tool %d, which is in the crib; it cannot be restored, and purging it would delete "
     "that "
     "tool's loans.",
     "ID, Description, ToolID"},

    {"Types", "Description GLOB '*[''\"]*'", "Type %d (%s) has a quote in its name; queries by that name may fail.",
     "ID, Description"},
    {"Locations", "Description GLOB '*[''\"]*'",
     "Location %d (%s) has a quote in its name; queries by that name may fail.", "ID, Description"},
    {"Tools", "Description || ifnull(Manufacturer, '') || ifnull(PartNumber, '') GLOB '*[''\"]*'",
     "Tool %d (%s, %s, %s) has a quote in its description, manufacturer or part number; lists and queries by it may "
     "fail.",
     "ID, Description, Manufacturer, PartNumber"},
    {"ScrapReasons", "Description GLOB '*[''\"]*'",
     "Scrap reason %d (%s) has a quote in it; tools cannot be scrapped for it.", "ID, Description"},
};

/// Goes through the faults of one file and mends what it may.
class Checker
{
public:
    Checker(Database &database, bool fix) : m_database(database), m_fix(fix) { }

    void run()
    {
        checkFile();
        checkTables();
        if (m_found > 0)
            return; // The rows of such a file tell nothing.
        for (const Check &check : checks)
            checkRows(check);
        checkCircles("Types");
        checkCircles("Locations");
        checkNumbers();
    }

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
    void checkRows(const Check &check);
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
    const Recordset rows = m_database.openNative("PRAGMA integrity_check");
    for (int row = 0; row < rows.recordCount(); ++row) {
        if (const QString finding = rows.at(row, 0).toText(); finding != "ok")
            found("The file is damaged, use a backup: " + finding);
    }
}

void Checker::checkTables()
{
    for (const Schema::Table &table : Schema::tables()) {
        Recordset rows =
            m_database.openNative(QString("SELECT name FROM pragma_table_info(%1)").arg(quoted(table.name)));
        QStringList names;
        for (int row = 0; row < rows.recordCount(); ++row)
            names << rows.at(row, 0).toText();
        if (names.isEmpty()) {
            found(QString("The table %1 is missing.").arg(table.name));
            continue;
        }
        for (const Schema::Column &column : table.columns) {
            if (!names.contains(column.name, Qt::CaseInsensitive))
                found(QString("The column %1 of the table %2 is missing.").arg(column.name, table.name));
        }
    }
}

void Checker::checkRows(const Check &check)
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
    // A folder of the number 0 lies in itself as long as it has that number.
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
    for (const Schema::Table &table : Schema::tables()) {
        for (const Schema::Column &column : table.columns) {
            if (!QString(column.type).startsWith("INTEGER") && column.type != QString("LONG"))
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

Command checkCommand()
{
    const QCommandLineOption fix("fix", "Mends what is safe to mend, in one transaction, and says what it did");
    return {
        "check",
        {"FILE"},
        {fix},
        "Looks for faults that the engine cannot prevent",
        "Folders without a parent or in circles, loans and tools that contradict each other, unknown references,\n"
        "numbers out of range or met twice, names with quotes, damage of the file itself. The exit status is 1 when a\n"
        "fault is found and not mended.",
        check};
}
