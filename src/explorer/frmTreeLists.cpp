// What the explorer's list shows for a tree node, one filler a view.
#include "common/ItemKeys.h"
#include "common/ProgramState.h"
#include "db/Schema.h"
#include "db/Session.h"
#include "explorer/frmTree.h"
#include "platform/gui/Handler.h"
#include "platform/text/Format.h"

#include <QScopeGuard>

/// What tells the lists of the two stored trees apart.
struct FolderLists {
    const char *subFolderPrefix;
    const char *subFolders;
    const char *ofFolder; ///< the tools' condition
};

const QString toolsOutOfEmployees = QStringLiteral("SELECT Tools.*, Locations.description as locdesc,"
                                                   " Types.description as typedesc,"
                                                   " CheckOutIn.Employee,CheckOutIn.DateOut,"
                                                   " Employee.LastName,Employee.FirstName"
                                                   " FROM CheckOutIn, Tools, Locations, Types,Employee"
                                                   " WHERE CheckOutIn.tool_id=Tools.id"
                                                   " AND CheckOutIn.employee=Employee.EmpId"
                                                   " AND Tools.location=Locations.ID AND Tools.type=Types.ID"
                                                   " AND CheckOutIn.active=true and tools.out=true");

namespace {

constexpr FolderLists typeLists{
    "t",
    "Select * from types where parent = %1 ORDER BY description",
    " AND Tools.Type=",
};
constexpr FolderLists locationLists{
    "l",
    "Select * from locations where parent = %1 ORDER BY description",
    " AND Tools.Location=",
};

const QString toolsInStock =
    QStringLiteral("SELECT Tools.*, Locations.description as locdesc, Types.description as typedesc, "
                   " 0000000000 as Employee FROM Tools, Locations, Types"
                   " WHERE Tools.Type=Types.ID and Tools.Location=Locations.ID"
                   " AND Tools.out=false");
const QString toolsOut = QStringLiteral("SELECT Tools.*, Locations.description as locdesc, "
                                        " Types.description as typedesc,  CheckOutIn.Employee "
                                        " FROM CheckOutIn, Tools, Locations, Types"
                                        " WHERE CheckOutIn.tool_id=Tools.id"
                                        " AND Tools.location=Locations.ID AND Tools.type=Types.ID"
                                        " AND CheckOutIn.active=true and tools.out=true");

// The dots mark the name of a folder elsewhere in the tree.
QString elsewhere(const QString &folder) { return "..\\" + folder; }

QString personName(const Recordset &row) { return row.text(u"LastName") + ", " + row.text(u"FirstName"); }

ListItem folderItem(const QString &key, const QString &text)
{
    return {.key = key, .text = text, .icon = ItemIcon::folder};
}

ListItem toolItem(const Recordset &row, bool out)
{
    const QString id = row.text(u"ID");
    return {.key = out ? "co" + id : "r" + id,
            .text = row.text(u"Description"),
            .icon = out ? ItemIcon::toolOut : ItemIcon::toolInStock,
            .subItems = {row.text(u"PartNumber"), elsewhere(row.text(u"typedesc")), elsewhere(row.text(u"locdesc")),
                         row.text(u"Manufacturer"), out ? row.text(u"Employee") : QString()}};
}

}

QString chargeText(const Recordset &pair)
{
    const QString jobOrOH = pair.text(u"JobOrOH");
    if (pair.field(u"LineItemTypeID").toInteger() != Schema::overheadCharge)
        return jobOrOH;
    return openRecordset("Select Operation.Description from"
                         " Operation Where Operation.OperNo="
                         + jobOrOH)
        .text(u"Description");
}

ListItem checkedOutItem(const Recordset &row)
{
    return {.key = "co" + row.text(u"ID"),
            .text = row.text(u"Description"),
            .icon = ItemIcon::toolOut,
            .subItems = {row.text(u"PartNumber"), personName(row), row.text(u"DateOut"),
                         elsewhere(row.text(u"typedesc")), elsewhere(row.text(u"locdesc"))}};
}

ListItem scrapItem(const Recordset &row)
{
    return {.key = "j" + row.text(u"ID"),
            .text = row.text(u"Description"),
            .icon = ItemIcon::toolScrapped,
            .subItems = {row.text(u"PartNumber"), elsewhere(row.text(u"TypeDescription")), personName(row),
                         Format::listDate(row.text(u"ScrapDate"))}};
}

void frmTree::tvMain_NodeClick(Node *node)
{
    ProgramState::TreeHasFocus = true;
    ui.lstToolList->scrollToTop();
    const HourGlass busy;
    const ReadScope scope(Session::database());
    const KeyedList::Filling filling(items());
    const auto hide = qScopeGuard([this] { ui.pB->finish(); });
    if (m_mode == "location")
        ListByLoc(node);
    else if (m_mode == "checkedOut")
        ListByCheckedOut(node);
    else if (m_mode == "scrap")
        ListByScrap(node);
    else
        ListByType(node);
}

void frmTree::startList(Node *node)
{
    items().clear();
    m_listedKey = node->key;
    showListHeading(node);
}

void frmTree::showListHeading(const Node *node)
{
    constexpr int wholePath = -1, shortPath = 40; // characters
    const bool stored = m_mode == "type" || m_mode == "location";
    ui.lblList->setText("Contents of '" + KeyedTree::fullPath(node).left(stored ? wholePath : shortPath) + "'");
}

void frmTree::addRows(const QString &statement, const std::function<ListItem(const Recordset &)> &itemOf)
{
    Recordset rows = openRecordset(statement);
    if (rows.isEmpty())
        return;
    ui.pB->start(rows.recordCount());
    for (; !rows.atEnd(); rows.moveNext()) {
        items().add(itemOf(rows));
        ui.pB->step();
    }
}

void frmTree::ListByType(Node *node) { ListByFolder(node, typeLists); }

void frmTree::ListByLoc(Node *node) { ListByFolder(node, locationLists); }

void frmTree::ListByFolder(Node *node, const FolderLists &lists)
{
    startList(node);
    const QString id = ItemKeys::numberOf(node->key);
    if (!node->children.empty())
        addRows(QString(lists.subFolders).arg(id), [&](const Recordset &row) {
            return folderItem(lists.subFolderPrefix + row.text(u"ID"), row.text(u"Description"));
        });
    if (node->key == ItemKeys::root)
        return;
    addRows(toolsInStock + lists.ofFolder + id, [](const Recordset &row) { return toolItem(row, false); });
    addRows(toolsOut + lists.ofFolder + id, [](const Recordset &row) { return toolItem(row, true); });
}

void frmTree::ListByCheckedOut(Node *node)
{
    startList(node);
    if (!node->children.empty()) {
        int number = 0;
        addRows("SELECT Distinct Description FROM Tools WHERE Out=-1", [&](const Recordset &row) {
            return folderItem("co" + QString::number(++number), row.text(u"Description"));
        });
    }
    if (node->key == ItemKeys::root)
        return;
    // The text stands between the quotes as it is: one with an apostrophe is refused by the engine.
    addRows(toolsOutOfEmployees + " AND Tools.Description='" + node->text + "'", checkedOutItem);
}

void frmTree::ListByScrap(Node *node)
{
    startList(node);
    const QString id = ItemKeys::numberOf(node->key);
    if (node->key == ItemKeys::root)
        addRows("SELECT distinct Scrap.LineItemTypeID, LineItemType.Code"
                " FROM Scrap INNER JOIN LineItemType"
                " ON Scrap.LineItemTypeID = LineItemType.index",
                [](const Recordset &row) { return folderItem("s" + row.text(u"LineItemTypeID"), row.text(u"Code")); });
    else if (node->key.startsWith('l'))
        addRows("SELECT distinct JoborOH,LineItemTypeID FROM Scrap WHERE LineItemTypeId=" + id,
                [](const Recordset &row) { return folderItem("l" + row.text(u"JobOrOH"), chargeText(row)); });
    else
        addRows("SELECT Scrap.*, Employee.EmpID,"
                " Employee.LastName, Employee.FirstName"
                " FROM Scrap LEFT JOIN Employee ON Scrap.Employee = Employee.EmpID"
                " WHERE Scrap.JobOrOh="
                    + id,
                scrapItem);
}
