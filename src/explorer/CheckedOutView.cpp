#include "explorer/CheckedOutView.h"

#include "db/Literals.h"
#include "db/Session.h"
#include "explorer/ListItems.h"
#include "explorer/Panes.h"
#include "explorer/clsTools.h"
#include "platform/gui/Icons.h"
#include "platform/text/Numbers.h"
#include "queries/QueryKind.h"
#include "transactions/Lending.h"

#include <QCoreApplication>
#include <QScopeGuard>

namespace {

const QString descriptionsOut = QStringLiteral("SELECT Distinct Description FROM Tools WHERE Out=-1");
const QString toolsOut = QStringLiteral("SELECT Tools.*, Locations.description as locdesc,"
                                        " Types.description as typedesc,"
                                        " CheckOutIn.Employee,CheckOutIn.DateOut,"
                                        " Employee.LastName,Employee.FirstName"
                                        " FROM CheckOutIn, Tools, Locations, Types,Employee"
                                        " WHERE CheckOutIn.tool_id=Tools.id"
                                        " AND CheckOutIn.employee=Employee.EmpId"
                                        " AND Tools.location=Locations.ID AND Tools.type=Types.ID"
                                        " AND CheckOutIn.active=true and tools.out=true");

ListItem toolOut(const Recordset &row)
{
    return {.key = ItemId{ItemId::toolOut, row.field(u"ID").toInteger()}.itemKey(),
            .text = row.text(u"Description"),
            .icon = ItemIcon::toolOut,
            .subItems = {row.text(u"PartNumber"), ListItems::personName(row), row.text(u"DateOut"),
                         ListItems::elsewhere(row.text(u"typedesc")), ListItems::elsewhere(row.text(u"locdesc"))}};
}

// Tools that are called alike are one folder; its number is only a position.
ListItem descriptionItem(int number, const Recordset &row)
{
    return ListItems::folder(ItemId{ItemId::description, number}.itemKey(), row.text(u"Description"));
}

}

CheckedOutView::CheckedOutView()
    : View({
        .mode = "checkedOut",
        .title = "Tools Checked Out",
        .headingLength = 40,
        .columns = {{"Description", 2000},
                    {"Part Number", 1440},
                    {"Employee", 1440},
                    {"Date Out", 1440},
                    {"Type", 1440},
                    {"Location", 1440}},
        .findColumns = {{"Description", 3000},
                        {"Part Number", 1600},
                        {"Employee", 2200},
                        {"Date Out", 1900},
                        {"Type", 2200},
                        {"Location", 2200}},
        .emptyHint = "No tool is out. To lend one, go to it in the view by tool type or location and press Check Out"
                     " (Alt+T).",
        .query = QueryKind::frmQueryCheckedOut,
        .printTemplate = "StillOutByTool.rpt",
        .tables = {"Tools", "CheckOutIn", "Types", "Locations", "Employee"},
        .refusals =
            {
                {Command::create,
                 {},
                 "To add a tool use the New button while in the View by Type or View by Location mode. ",
                 QMessageBox::Information},
                {Command::edit,
                 {ItemId::root, ItemId::description, ItemId::toolOut},
                 "A checked out tool cannot be edited!",
                 QMessageBox::Information},
                {Command::remove, {ItemId::root}, "You cannot delete the Tools node."},
                {Command::remove, {ItemId::description, ItemId::toolOut}, "You must check tools in before deleting."},
            },
    })
{
}

QString CheckedOutView::buildTree(Panes &panes) const
{
    const Panes::Hidden hidden(panes);
    panes.nodes().clear();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    Node *root = panes.begin(*this);
    root->sorted = true;
    Recordset rows = openRecordset(descriptionsOut);
    panes.progress().start(rows.recordCount(), "Tree Items");
    const auto hide = qScopeGuard([&] { panes.progress().finish(); });
    for (qint64 counter = 1; !rows.atEnd(); rows.moveNext(), ++counter) {
        const ItemId id{ItemId::description, asInteger(counter)};
        panes.nodes().add(root, id.nodeKey(), rows.text(u"Description"), Icons::folder())->sorted = true;
        panes.progress().step();
    }
    return {};
}

void CheckedOutView::fillList(Panes &panes, const Node *node) const
{
    if (!node->children.empty()) {
        int number = 0;
        panes.addRows(descriptionsOut, [&](const Recordset &row) { return descriptionItem(++number, row); });
    }
    if (!node->parent)
        return;
    // The text stands between the quotes as it is: one with an apostrophe is refused by the engine.
    const QString described = " AND Tools.Description='" + node->text + "'";
    panes.addRows(toolsOut + described, toolOut);
    ListItems::addOutWithoutLoan(panes, described, [](const Recordset &row) {
        ListItem item = toolOut(row);
        item.setSubItem(2, Lending::nobody);
        return item;
    });
}

KeyedTree::Node *CheckedOutView::nodeOf(KeyedTree &nodes, const ListItem &folder) const
{
    const auto &descriptions = nodes.root()->children;
    const auto found = std::find_if(descriptions.begin(), descriptions.end(),
                                    [&](const auto &node) { return node->text == folder.text; });
    return found == descriptions.end() ? nullptr : found->get();
}

KeyedTree::Node *CheckedOutView::sameNode(KeyedTree &nodes, const Thing &before) const
{
    return nodeOf(nodes, {.key = {}, .text = before.text});
}

QString CheckedOutView::popUpOf(const ListItem &item) const
{
    return idOf(item).kind == ItemId::toolOut && item.icon == ItemIcon::toolOut ? "mnuListCheckIn" : QString();
}

QString CheckedOutView::selectionFormula(const Node &node) const
{
    return node.parent ? "{Tools.Description} = " + quoted(node.text) : QString();
}

void CheckedOutView::find(clsTools &search, const QString &pattern) const
{
    const auto inTools = [](ListItem item) {
        item.path = "Tools\\" + item.text;
        return item;
    };
    int number = 0;
    search.addRows(descriptionsOut + " and Description LIKE " + pattern,
                   [&](const Recordset &row) { return inTools(descriptionItem(++number, row)); });
    search.addRows(toolsOut + " AND Tools.Description LIKE " + pattern,
                   [&](const Recordset &row) { return inTools(toolOut(row)); });
}
