#include "explorer/clsTools.h"

#include "common/ItemKeys.h"
#include "db/Literals.h"
#include "db/Schema.h"
#include "db/Session.h"
#include "explorer/frmTree.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QSet>

namespace {

/// What the statements over one of the two stored trees are called by.
struct Names {
    const char *table;
    const char *column; ///< of the tools
};

const Names &namesOf(clsTools::Kind kind)
{
    static constexpr Names types{"types", "type"}, locations{"locations", "location"};
    return kind == clsTools::Kind::types ? types : locations;
}

QString joined(const QList<qint32> &ids)
{
    QStringList texts;
    for (const qint32 id : ids)
        texts.append(QString::number(id));
    return texts.join(',');
}

QList<qint32> idsOf(const QString &statement)
{
    QList<qint32> ids;
    for (Recordset rows = openRecordset(statement); !rows.atEnd(); rows.moveNext())
        ids.append(qint32(rows.field(u"id").toInteger()));
    return ids;
}

// A parent before its children, each subtree whole before the next. `seen` ends circles.
void gather(const Names &names, qint32 folder, QList<qint32> &folders, QList<qint32> &tools, QSet<qint32> &seen)
{
    const QString id = QString::number(folder);
    tools.append(idsOf(QString("SELECT id FROM tools WHERE ") + names.column + "=" + id));
    for (const qint32 child : idsOf(QString("SELECT id FROM ") + names.table + " WHERE parent=" + id)) {
        if (seen.contains(child))
            continue;
        seen.insert(child);
        folders.append(child);
        gather(names, child, folders, tools, seen);
    }
}

constexpr int rowsBetweenEvents = 5;
constexpr qint64 millisecondsBetweenRepaints = 33;

}

QString clsTools::Delete(Kind kind, QList<qint32> folders, QList<qint32> tools)
{
    const Names &names = namesOf(kind);
    QSet<qint32> seen(folders.begin(), folders.end());
    const QList<qint32> chosen = folders;
    for (const qint32 folder : chosen)
        gather(names, folder, folders, tools, seen);

    QString problem;
    Transaction transaction(Session::database());
    const auto step = [&](const QString &statement, const QString &whatFails) {
        try {
            execute(statement);
        } catch (const EngineError &error) {
            problem = "Error: " + whatFails + "\r\nError: " + error.text();
        }
        return problem.isEmpty();
    };
    // History, tools, folders: each refers to what goes after it.
    if (!tools.isEmpty()) {
        if (!step("DELETE FROM CheckOutIn WHERE tool_id in (" + joined(tools) + ")",
                  "Unable to delete Tools related data in the CheckOutIn table."))
            return problem;
        if (!step("DELETE FROM tools WHERE id in (" + joined(tools) + ")", "Unable to delete Tools data."))
            return problem;
    }
    if (!folders.isEmpty()) {
        const QString what = kind == Kind::types ? "Types" : "Locations";
        if (!step(QString("DELETE FROM ") + names.table + " WHERE id in (" + joined(folders) + ")",
                  "Unable to delete " + what + " data."))
            return problem;
    }
    transaction.commit();
    return {};
}

void clsTools::Find(const QString &mode, const QString &text, KeyedList &found)
{
    const QString pattern = quoted(text);
    m_found = &found;
    m_count = 0;
    m_paths.clear();
    m_pending.clear();
    m_searching = true;
    m_sinceShown.start();
    const auto end = qScopeGuard([this] {
        m_searching = false;
        showPending();
    });
    if (mode == "type" || mode == "location") {
        const Kind kind = mode == "type" ? Kind::types : Kind::locations;
        findFolders(kind, pattern);
        findTools(kind, pattern);
    } else if (mode == "scrap") {
        findScrapped(pattern);
    } else if (mode == "checkedOut") {
        findCheckedOut(pattern);
    }
}

// Touching the list for each row would cost more than the search.
bool clsTools::report(ListItem item)
{
    m_pending.push_back(std::move(item));
    ++m_count;
    if (m_sinceShown.elapsed() >= millisecondsBetweenRepaints)
        showPending();
    emit ChangeList();
    if (m_searching && m_count % rowsBetweenEvents == 0)
        QCoreApplication::processEvents();
    return m_searching;
}

void clsTools::showPending()
{
    m_found->addAll(std::exchange(m_pending, {}));
    m_sinceShown.restart();
}

void clsTools::findRows(const QString &statement, const std::function<ListItem(const Recordset &)> &itemOf)
{
    if (!m_searching)
        return;
    for (Recordset rows = openRecordset(statement); !rows.atEnd(); rows.moveNext())
        if (!report(itemOf(rows)))
            return;
}

void clsTools::findFolders(Kind kind, const QString &pattern)
{
    const char *prefix = kind == Kind::types ? "t" : "l";
    findRows(QString("SELECT * FROM ") + namesOf(kind).table + " WHERE description LIKE " + pattern,
             [&](const Recordset &row) {
                 const QString where = pathInTree(kind, qint32(row.field(u"ID").toInteger()));
                 return ListItem{.key = prefix + row.text(u"ID"),
                                 .text = row.text(u"Description"),
                                 .icon = ItemIcon::folder,
                                 .subItems = {QString(), QString(), where},
                                 .path = where};
             });
}

void clsTools::findTools(Kind kind, const QString &pattern)
{
    const QString column = namesOf(kind).column;
    findRows("SELECT * FROM tools WHERE description LIKE " + pattern, [&](const Recordset &row) {
        const QString where = pathInTree(kind, qint32(row.field(column).toInteger()));
        return ListItem{.key = "r" + row.text(u"ID"),
                        .text = row.text(u"Description"),
                        .icon = row.field(u"Out").toBool() ? ItemIcon::toolOut : ItemIcon::toolInStock,
                        .subItems = {row.text(u"PartNumber"), row.text(u"Manufacturer"), where},
                        .path = where};
    });
}

void clsTools::findScrapped(const QString &pattern)
{
    const auto folder = [](const QString &key, const QString &text, const QString &path) {
        return ListItem{.key = key, .text = text, .icon = ItemIcon::folder, .path = path + text};
    };
    findRows(
        "SELECT distinct Scrap.LineItemTypeID, LineItemType.Code"
        " FROM Scrap INNER JOIN LineItemType"
        " ON Scrap.LineItemTypeID = LineItemType.index"
        " WHERE LineItemType.Code LIKE "
            + pattern,
        [&](const Recordset &row) { return folder("s" + row.text(u"LineItemTypeID"), row.text(u"Code"), "Tools\\"); });

    // The statement crosses every scrap record with the kind 'Job'; an operation's records are no job's.
    if (m_searching) {
        Recordset jobs = openRecordset("SELECT distinct JoborOH,LineItemTypeID FROM Scrap"
                                       " INNER JOIN LineItemType"
                                       " WHERE LineItemType.Code='Job' and JobOrOh LIKE "
                                       + pattern);
        for (; !jobs.atEnd(); jobs.moveNext())
            if (jobs.field(u"LineItemTypeID").toInteger() == Schema::jobCharge
                && !report(folder("l" + jobs.text(u"JobOrOH"), jobs.text(u"JobOrOH"), "Tools\\Job\\")))
                return;
    }

    findRows("SELECT distinct JoborOH,LineItemTypeID,Operation.Description"
             " FROM (Scrap INNER JOIN LineItemType"
             " ON Scrap.LineItemTypeID = LineItemType.index)"
             " INNER JOIN Operation on"
             " (Scrap.JobOrOh=Operation.OperNo)"
             " WHERE LineItemType.code='Overhead'"
             " and Operation.Description LIKE "
                 + pattern,
             [&](const Recordset &row) {
                 return folder("l" + row.text(u"JobOrOH"), row.text(u"Description"), "Tools\\Overhead\\");
             });

    findRows("SELECT Scrap.*,Employee.EmpId,"
             " Employee.LastName,Employee.FirstName"
             " FROM Scrap INNER JOIN Employee on"
             " Scrap.Employee=Employee.EmpId"
             " WHERE Scrap.Description LIKE "
                 + pattern,
             [&](const Recordset &row) {
                 const bool forOverhead = row.field(u"LineItemTypeId").toInteger() == Schema::overheadCharge;
                 ListItem item = scrapItem(row);
                 const QString charge = chargeText(row);
                 item.subItems.append(charge);
                 item.path = (forOverhead ? "Tools\\Overhead\\" : "Tools\\Job\\") + charge;
                 return item;
             });
}

void clsTools::findCheckedOut(const QString &pattern)
{
    int number = 0;
    findRows("SELECT Distinct Description FROM Tools WHERE Out=-1"
             " and Description LIKE "
                 + pattern,
             [&](const Recordset &row) {
                 const QString text = row.text(u"Description");
                 return ListItem{.key = QStringLiteral("co%1").arg(++number),
                                 .text = text,
                                 .icon = ItemIcon::folder,
                                 .path = "Tools\\" + text};
             });
    findRows(toolsOutOfEmployees + " AND Tools.Description LIKE " + pattern, [](const Recordset &row) {
        ListItem item = checkedOutItem(row);
        item.path = "Tools\\" + item.text;
        return item;
    });
}

QString clsTools::pathInTree(Kind kind, qint32 id)
{
    QString &known = m_paths[id];
    if (known.isEmpty())
        known = "Tools\\" + path(kind, id);
    return known;
}

QString clsTools::path(Kind kind, qint32 id)
{
    const QString statement = QString("SELECT * FROM ") + namesOf(kind).table + " WHERE id=";
    QStringList names;
    QSet<qint32> seen;
    while (id != 0) {
        const Recordset row = openRecordset(statement + QString::number(id));
        if (row.isEmpty() || seen.contains(id))
            throw std::runtime_error("Unable to find the parent record");
        seen.insert(id);
        names.prepend(row.text(u"Description"));
        id = qint32(row.field(u"Parent").toInteger());
    }
    return names.join('\\');
}
