#include "explorer/FolderView.h"

#include "catalogue/FolderDeletion.h"
#include "catalogue/FolderMove.h"
#include "db/Session.h"
#include "explorer/ListItems.h"
#include "explorer/Panes.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"
#include "queries/QueryKind.h"
#include "transactions/AtomicChange.h"

#include <QScopeGuard>

constinit const FolderView::Names FolderView::types{
    .kind = clsTools::Kind::types,
    .plural = "types",
    .itemPrefix = "t",
    .popUp = "mnuTreePopType",
    .count = "SELECT Count(*) AS cnt FROM Types",
    .descriptionOf = "SELECT Description FROM Types WHERE ID = 0 ORDER BY Description",
    .childrenOf = "SELECT * FROM Types WHERE Parent = 0 ORDER BY Description",
    .subFolders = "Select * from types where parent = %1 ORDER BY description",
    .ofFolder = " AND Tools.Type=",
    .printed = "{Tools.Type}",
};

constinit const FolderView::Names FolderView::locations{
    .kind = clsTools::Kind::locations,
    .plural = "locations",
    .itemPrefix = "l",
    .popUp = "mnuTreePopLoc",
    .count = "SELECT Count(*) AS cnt FROM Locations",
    .descriptionOf = "SELECT Description FROM Locations WHERE ID = 0 ORDER BY Description",
    .childrenOf = "SELECT * FROM Locations WHERE Parent = 0 ORDER BY Description",
    .subFolders = "Select * from locations where parent = %1 ORDER BY description",
    .ofFolder = " AND Tools.Location=",
    .printed = "{Tools.Location}",
};

namespace {

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

ListItem toolItem(const Recordset &row, bool out)
{
    const ItemId id{out ? ItemId::toolOut : ItemId::toolInStock, row.field(u"ID").toInteger()};
    return {.key = id.itemKey(),
            .text = row.text(u"Description"),
            .icon = out ? ItemIcon::toolOut : ItemIcon::toolInStock,
            .subItems = {row.text(u"PartNumber"), ListItems::elsewhere(row.text(u"typedesc")),
                         ListItems::elsewhere(row.text(u"locdesc")), row.text(u"Manufacturer"),
                         out ? row.text(u"Employee") : QString()}};
}

ListItem inStock(const Recordset &row) { return toolItem(row, false); }

ListItem out(const Recordset &row) { return toolItem(row, true); }

View::Row rowOf(clsTools::Kind kind)
{
    const bool types = kind == clsTools::Kind::types;
    return {
        .mode = types ? "type" : "location",
        .title = types ? "Tool Types" : "Tool Locations",
        .headingLength = -1,
        .columns = {{"Description", 2000},
                    {"Part Number", 1440},
                    {"Type", 1440},
                    {"Location", 1440},
                    {"Manufacturer", 1440},
                    {"Checkout Employee", 2000}},
        .findColumns = {{"Description", 3000}, {"Part Number", 1600}, {"Manufacturer", 1800}, {"Path", 5000}},
        .emptyHint = types ? "No tool types yet. Press New (Alt+N) and choose New Type."
                           : "No locations yet. Press New (Alt+N) and choose New Location.",
        .query = QueryKind::frmQueryTypeLoc,
        .printTemplate = types ? "ToolsByType.rpt" : "ToolsByLocation.rpt",
        .tables = {"Types", "Locations", "Tools", "CheckOutIn", "Employee"},
        .refusals =
            {
                {View::Command::edit, {ItemId::root}, "You cannot edit this Node", QMessageBox::Information},
                {View::Command::edit,
                 {ItemId::toolOut},
                 "A checked out tool cannot be edited!",
                 QMessageBox::Information},
                {View::Command::remove, {ItemId::root}, "You cannot delete the Tools node."},
                {View::Command::remove, {ItemId::toolOut}, "You must Check In the tool before deleting."},
                {View::Command::move, {ItemId::toolOut}, FolderMove::mustCheckIn},
            },
    };
}

QList<qint32> numbersOf(const View::Things &things, bool tools)
{
    QList<qint32> numbers;
    for (const Thing &thing : things)
        if (thing.id.isTool() == tools)
            numbers.append(qint32(thing.id.number));
    return numbers;
}

}

FolderView::FolderView(const Names &names) : View(rowOf(names.kind)), m_names(names) { }

struct FolderView::Build {
    Panes &panes;
    SelectByNumber descriptionOf;
    SelectByNumber childrenOf;
    QStringList tooHigh = {}; ///< numbers of folders that the tree cannot hold
};

QString FolderView::buildTree(Panes &panes) const
{
    Database &database = Session::database();
    const ReadScope scope(database);
    const KeyedTree::Filling filling(panes.nodes());
    const auto hide = qScopeGuard([&] { panes.progress().finish(); });
    panes.progress().start(int(openRecordset(m_names.count).field(u"cnt").toInteger()));
    Build build{panes, {database, m_names.descriptionOf}, {database, m_names.childrenOf}};
    addFolder(build, panes.begin(*this), 0);
    if (build.tooHigh.isEmpty())
        return {};
    return QStringLiteral("The %1 numbered %2 cannot be shown: the tree holds numbers up to 32767.")
        .arg(m_names.plural, build.tooHigh.join(", "));
}

// The root's node is there already; every other one is read, added and followed by what lies below it.
void FolderView::addFolder(Build &build, Node *parent, qint16 id) const
{
    Node *node = parent;
    if (id != 0) {
        const QString text = build.descriptionOf.open(id).text(u"Description");
        node = build.panes.nodes().add(parent, ItemId{ItemId::folder, id}.nodeKey(), text, Icons::folder());
        build.panes.progress().step();
    }
    for (Recordset rows = build.childrenOf.open(id); !rows.atEnd(); rows.moveNext()) {
        const qint64 child = rows.field(u"ID").toInteger();
        if (child != qint16(child))
            build.tooHigh.append(QString::number(child));
        else if (child != 0) // 0 would be the root again
            addFolder(build, node, qint16(child));
    }
    // The rows came in order; a node that is added later goes to its place.
    node->sorted = true;
}

void FolderView::fillList(Panes &panes, const Node *node) const
{
    const QString id = idOf(*node).digits();
    if (!node->children.empty())
        panes.addRows(QString(m_names.subFolders).arg(id), [&](const Recordset &row) {
            return ListItems::folder(m_names.itemPrefix + row.text(u"ID"), row.text(u"Description"));
        });
    if (!node->parent)
        return;
    panes.addRows(toolsInStock + m_names.ofFolder + id, inStock);
    panes.addRows(toolsOut + m_names.ofFolder + id, out);
    ListItems::addOutWithoutLoan(panes, m_names.ofFolder + id, out);
}

QString FolderView::popUpOf(const ListItem &item) const
{
    switch (idOf(item).kind) {
    case ItemId::toolInStock:
        return item.icon == ItemIcon::toolOut ? QString() : "mnuTreePopTool";
    case ItemId::toolOut:
        return "mnuListCheckIn";
    default:
        return {};
    }
}

// What forbids a deletion is looked for before the question and again before anything is deleted.
View::Outcome FolderView::remove(const Things &things, bool fromTree) const
{
    const QList<qint32> folders = numbersOf(things, false), tools = numbersOf(things, true);
    const FolderDeletion deletion = clsTools::deletionOf(m_names.kind, folders, tools);
    if (const auto objection = deletion.objection(fromTree)) {
        msgBox(*objection);
        return Outcome::stale;
    }
    const QString oneFolder = "You are about to delete a tool " + mode() + ". This can not be undone. Are you sure?";
    if (!confirmed(things.size() > 1 ? severalThings : tools.isEmpty() ? oneFolder : oneTool))
        return Outcome::declined;

    QString problem;
    bool othersWereFaster = false;
    const auto stillAllowed = [&] {
        const auto objection = deletion.objection(fromTree);
        othersWereFaster = objection.has_value();
        return objection ? Refusal::othersWereFirst + objection->text : QString();
    };
    if (!deletedUnderBar(things.size(), [&](const Progress &progress) {
            problem = clsTools().Delete(m_names.kind, folders, tools, stillAllowed, progress);
        }))
        return Outcome::declined;
    if (problem.isEmpty())
        return Outcome::done;
    msgBox({.text = problem, .icon = othersWereFaster ? QMessageBox::Information : QMessageBox::Critical});
    return Outcome::stale;
}

View::Outcome FolderView::move(const Things &things, const Thing &target, bool fromTree) const
{
    if (const auto refused = refusal(Command::move, things)) {
        msgBox(*refused);
        return Outcome::declined;
    }
    if (std::any_of(things.begin(), things.end(),
                    [&](const Thing &thing) { return thing.id == target.id || thing.parent == target.id; }))
        return Outcome::declined;
    const FolderMove folderMove{.table = m_names.plural,
                                .column = row.mode,
                                .folders = numbersOf(things, false),
                                .tools = numbersOf(things, true),
                                .target = qint32(target.id.number),
                                .targetText = target.text,
                                .fromTree = fromTree};
    if (const auto refused = folderMove.refusal()) {
        msgBox(*refused);
        return Outcome::declined;
    }
    if (const auto objection = folderMove.objection()) {
        msgBox(*objection);
        return Outcome::stale;
    }
    if (msgBox({.text = "Move the items to " + target.text + "?",
                .icon = QMessageBox::Question,
                .buttons = QMessageBox::Yes | QMessageBox::No})
        != QMessageBox::Yes)
        return Outcome::declined;
    if (const auto problem = folderMove.run()) {
        msgBox(*problem);
        return Outcome::stale;
    }
    return Outcome::done;
}

QString FolderView::selectionFormula(const Node &node) const
{
    return node.parent ? m_names.printed + (" = " + idOf(node).digits()) : QString();
}

void FolderView::find(clsTools &search, const QString &pattern) const
{
    search.addRows(
        QString("SELECT * FROM ") + m_names.plural + " WHERE description LIKE " + pattern, [&](const Recordset &row) {
            const clsTools::Place place = search.placeOf(m_names.kind, qint32(row.field(u"ID").toInteger()));
            ListItem item = ListItems::folder(m_names.itemPrefix + row.text(u"ID"), row.text(u"Description"));
            item.subItems = {QString(), QString(), place.shown};
            item.path = place.path;
            item.nodeKey = place.nodeKey;
            return item;
        });
    search.addRows("SELECT * FROM tools WHERE description LIKE " + pattern, [&](const Recordset &row) {
        const clsTools::Place place = search.placeOf(m_names.kind, qint32(row.field(mode()).toInteger()));
        return ListItem{.key = "r" + row.text(u"ID"),
                        .text = row.text(u"Description"),
                        .icon = row.field(u"Out").toBool() ? ItemIcon::toolOut : ItemIcon::toolInStock,
                        .subItems = {row.text(u"PartNumber"), row.text(u"Manufacturer"), place.shown},
                        .path = place.path,
                        .nodeKey = place.nodeKey};
    });
}
