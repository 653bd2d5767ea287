#include "explorer/ScrapView.h"

#include "db/Schema.h"
#include "db/Session.h"
#include "explorer/ListItems.h"
#include "explorer/Panes.h"
#include "explorer/clsTools.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"
#include "platform/text/Format.h"
#include "queries/QueryKind.h"
#include "transactions/ScrapPurge.h"

#include <QScopeGuard>
#include <QStringBuilder>

namespace {

const QString kindsOfCharge = QStringLiteral("SELECT distinct Scrap.LineItemTypeID, LineItemType.Code"
                                             " FROM Scrap INNER JOIN LineItemType"
                                             " ON Scrap.LineItemTypeID = LineItemType.index");

/// What the jobs and operations that tools were scrapped for are called: a job's number, an operation's description.
class ChargeTexts
{
public:
    QString of(const Recordset &pair)
    {
        const Value jobOrOH = pair.field(u"JobOrOH");
        if (pair.field(u"LineItemTypeID").toInteger() != Schema::overheadCharge)
            return jobOrOH.toText();
        return m_operation.open(jobOrOH.toInteger()).text(u"Description");
    }

private:
    SelectByNumber m_operation{Session::database(),
                               "Select Operation.Description from"
                               " Operation Where Operation.OperNo=0"};
};

void addCharge(KeyedTree &nodes, KeyedTree::Node *kind, const Recordset &pair, ChargeTexts &charges)
{
    nodes.add(kind, u'C' % pair.text(u"JobOrOH"), charges.of(pair), Icons::folder())->sorted = true;
}

ListItem scrapItem(const Recordset &row)
{
    return {.key = ItemId{ItemId::scrapRecord, row.field(u"ID").toInteger()}.itemKey(),
            .text = row.text(u"Description"),
            .icon = ItemIcon::toolScrapped,
            .subItems = {row.text(u"PartNumber"), ListItems::elsewhere(row.text(u"TypeDescription")),
                         ListItems::personName(row), Format::listDate(row.text(u"ScrapDate"))}};
}

QList<qint32> recordsOf(const Thing &charge)
{
    QList<qint32> ids;
    Recordset rows = openRecordset("SELECT Id FROM Scrap Where JobOrOh = " + charge.id.digits()
                                   + " And LineItemTypeID = " + charge.parent.digits() + " ORDER BY ID");
    for (; !rows.atEnd(); rows.moveNext())
        ids.append(qint32(rows.field(u"Id").toInteger()));
    return ids;
}

}

ScrapView::ScrapView()
    : View({
        .mode = "scrap",
        .title = "Tools Scrapped",
        .headingLength = 40,
        .columns =
            {{"Description", 2000}, {"Part Number", 1440}, {"Type", 1440}, {"Employee", 1440}, {"Date Scrapped", 1440}},
        .findColumns = {{"Description", 3000},
                        {"Part Number", 1600},
                        {"Type", 2200},
                        {"Employee", 2200},
                        {"Date Scrapped", 1700},
                        {"Job or OH", 1700}},
        .emptyHint = "No tool was scrapped.",
        .query = QueryKind::frmQueryScrap,
        .printTemplate = "ToolsScrapped.rpt",
        .tables = {"Scrap", "LineItemType", "Operation", "Employee"},
        .refusals =
            {
                {Command::create,
                 {},
                 "To add a tool use the New button while in the View by Type or View by Location mode. ",
                 QMessageBox::Information},
                {Command::edit, {ItemId::scrapRecord}, "A scrapped tool cannot be edited!", QMessageBox::Information},
                {Command::edit,
                 {ItemId::root, ItemId::chargeKind, ItemId::charge},
                 "This node cannot be edited.",
                 QMessageBox::Information},
                {Command::remove, {ItemId::root}, "You cannot delete the Tools node."},
                {Command::remove, {ItemId::chargeKind}, "Scrapped tools must be deleted individually."},
            },
    })
{
}

QString ScrapView::buildTree(Panes &panes) const
{
    const ReadScope scope(Session::database());
    const Panes::Hidden hidden(panes);
    Node *root = panes.begin(*this);
    root->sorted = true;
    Recordset kinds = openRecordset(kindsOfCharge);
    Recordset pairs = openRecordset("SELECT distinct JoborOH,LineItemTypeID FROM Scrap");
    panes.progress().start(kinds.recordCount() + pairs.recordCount(), "Tree Items");
    const auto hide = qScopeGuard([&] { panes.progress().finish(); });
    KeyedTree &nodes = panes.nodes();
    ChargeTexts charges;
    for (; !kinds.atEnd(); kinds.moveNext()) {
        nodes.add(root, u'l' % kinds.text(u"LineItemTypeID"), kinds.text(u"Code"), Icons::folder())->sorted = true;
        panes.progress().step();
    }
    for (; !pairs.atEnd(); pairs.moveNext()) {
        addCharge(nodes, nodes.find(u'l' % pairs.text(u"LineItemTypeID")), pairs, charges);
        panes.progress().step();
    }
    return {};
}

// A step that fails is skipped: the same number may be a job's and an operation's, and the second one finds its key
// taken.
bool ScrapView::openNode(Panes &panes, Node *node) const
{
    if (!node->parent)
        return false;
    const auto skippingErrors = [](const std::function<void()> &step) {
        try {
            step();
        } catch (const std::exception &) {
        }
    };
    skippingErrors([&] {
        Recordset pairs = openRecordset("SELECT distinct JoborOH,LineItemTypeID FROM Scrap WHERE LineItemTypeId="
                                        + idOf(*node).digits());
        panes.nodes().removeChildren(node);
        ChargeTexts charges;
        for (; !pairs.atEnd(); pairs.moveNext())
            skippingErrors([&] { addCharge(panes.nodes(), node, pairs, charges); });
    });
    return true;
}

void ScrapView::fillList(Panes &panes, const Node *node) const
{
    const ItemId id = idOf(*node);
    if (id.kind == ItemId::root) {
        panes.addRows(kindsOfCharge, [](const Recordset &row) {
            return ListItems::folder("s" + row.text(u"LineItemTypeID"), row.text(u"Code"));
        });
    } else if (id.kind == ItemId::chargeKind) {
        ChargeTexts charges;
        panes.addRows(
            "SELECT distinct JoborOH,LineItemTypeID FROM Scrap WHERE LineItemTypeId=" + id.digits(),
            [&](const Recordset &row) { return ListItems::folder("l" + row.text(u"JobOrOH"), charges.of(row)); });
    } else {
        panes.addRows("SELECT Scrap.*, Employee.EmpID,"
                      " Employee.LastName, Employee.FirstName"
                      " FROM Scrap LEFT JOIN Employee ON Scrap.Employee = Employee.EmpID"
                      " WHERE Scrap.JobOrOh="
                          + id.digits(),
                      scrapItem);
    }
}

KeyedTree::Node *ScrapView::sameNode(KeyedTree &nodes, const Thing &before) const
{
    Node *node = View::sameNode(nodes, before);
    return node && idOf(*node->parent) == before.parent ? node : nullptr;
}

QString ScrapView::popUpOf(const ListItem &item) const
{
    return idOf(item).kind == ItemId::scrapRecord ? "mnuListPopScrap" : QString();
}

View::Outcome ScrapView::remove(const Things &things, bool) const
{
    QList<qint32> records;
    bool folders = false;
    for (const Thing &thing : things) {
        folders = folders || thing.id.kind == ItemId::charge;
        if (thing.id.kind == ItemId::charge)
            records.append(recordsOf(thing));
        else
            records.append(qint32(thing.id.number));
    }
    if (records.isEmpty()) {
        msgBox({.text = "Nothing to delete. Please select the item(s) to delete first."});
        return Outcome::stale;
    }
    if (!confirmed(folders ? severalThings : oneTool))
        return Outcome::declined;
    QStringList problems;
    if (!deletedUnderBar(size_t(records.size()),
                         [&](const Progress &progress) { problems = MainSubs::PurgeScrapped(records, progress); }))
        return Outcome::declined;
    for (const QString &problem : std::as_const(problems))
        msgBox({.text = problem});
    msgBox({.text = problems.isEmpty() ? "Selected Scrapped Tool(s) deleted."
                                       : "One or more Scrapped Tools could not be deleted"});
    return Outcome::stale;
}

QString ScrapView::selectionFormula(const Node &node) const
{
    if (!node.parent)
        return {};
    const ItemId id = idOf(node);
    return (id.kind == ItemId::charge ? "{Scrap.JobOrOH} = " : "{Scrap.LineItemTypeId} = ") + id.digits();
}

void ScrapView::find(clsTools &search, const QString &pattern) const
{
    const auto folder = [](const ItemId &id, const QString &text, const QString &path) {
        ListItem item = ListItems::folder(id.itemKey(), text);
        item.path = path + text;
        item.nodeKey = id.nodeKey();
        return item;
    };
    const auto charge = [](const Recordset &row) { return ItemId{ItemId::charge, row.field(u"JobOrOH").toInteger()}; };
    search.addRows(kindsOfCharge + " WHERE LineItemType.Code LIKE " + pattern, [&](const Recordset &row) {
        return folder({ItemId::chargeKind, row.field(u"LineItemTypeID").toInteger()}, row.text(u"Code"), "Tools\\");
    });

    // The statement crosses every scrap record with the kind 'Job'; an operation's records are no job's.
    search.addRows(
        "SELECT distinct JoborOH,LineItemTypeID FROM Scrap"
        " INNER JOIN LineItemType"
        " WHERE LineItemType.Code='Job' and JobOrOh LIKE "
            + pattern,
        [&](const Recordset &row) { return folder(charge(row), row.text(u"JobOrOH"), "Tools\\Job\\"); },
        [](const Recordset &row) { return row.field(u"LineItemTypeID").toInteger() == Schema::jobCharge; });

    search.addRows(
        "SELECT distinct JoborOH,LineItemTypeID,Operation.Description"
        " FROM (Scrap INNER JOIN LineItemType"
        " ON Scrap.LineItemTypeID = LineItemType.index)"
        " INNER JOIN Operation on"
        " (Scrap.JobOrOh=Operation.OperNo)"
        " WHERE LineItemType.code='Overhead'"
        " and Operation.Description LIKE "
            + pattern,
        [&](const Recordset &row) { return folder(charge(row), row.text(u"Description"), "Tools\\Overhead\\"); });

    ChargeTexts charges;
    search.addRows("SELECT Scrap.*,Employee.EmpId,"
                   " Employee.LastName,Employee.FirstName"
                   " FROM Scrap INNER JOIN Employee on"
                   " Scrap.Employee=Employee.EmpId"
                   " WHERE Scrap.Description LIKE "
                       + pattern,
                   [&](const Recordset &row) {
                       const bool forOverhead = row.field(u"LineItemTypeId").toInteger() == Schema::overheadCharge;
                       ListItem item = scrapItem(row);
                       const QString called = charges.of(row);
                       item.subItems.append(called);
                       item.path = (forOverhead ? "Tools\\Overhead\\" : "Tools\\Job\\") + called;
                       item.nodeKey = charge(row).nodeKey();
                       return item;
                   });
}
