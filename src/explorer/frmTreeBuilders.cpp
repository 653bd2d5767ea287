// The explorer's four trees.
#include "common/ItemKeys.h"
#include "db/Session.h"
#include "explorer/frmTree.h"
#include "platform/gui/Handler.h"
#include "platform/gui/Icons.h"
#include "platform/text/Numbers.h"

#include <QScopeGuard>

/// One of the two stored trees: what tells it from the other.
struct FolderTree {
    const char *mode;
    const char *title;
    const char *count;
    const char *descriptionOf;
    const char *childrenOf;
};

/// What is asked about each folder.
struct FolderStatements {
    SelectByNumber descriptionOf;
    SelectByNumber childrenOf;
};

namespace {

constexpr FolderTree typeTree{
    "type",
    "Tool Types",
    "SELECT Count(*) AS cnt FROM Types",
    "SELECT Description FROM Types WHERE ID = 0 ORDER BY Description",
    "SELECT * FROM Types WHERE Parent = 0 ORDER BY Description",
};
constexpr FolderTree locationTree{
    "location",
    "Tool Locations",
    "SELECT Count(*) AS cnt FROM Locations",
    "SELECT Description FROM Locations WHERE ID = 0 ORDER BY Description",
    "SELECT * FROM Locations WHERE Parent = 0 ORDER BY Description",
};

// Nothing of a tree is seen until it is built.
class HiddenContents
{
public:
    explicit HiddenContents(TreeView &view) : m_view(view), m_filling(view.nodes()) { m_view.viewport()->hide(); }
    ~HiddenContents() { m_view.viewport()->show(); }
    Q_DISABLE_COPY_MOVE(HiddenContents)

private:
    TreeView &m_view;
    KeyedTree::Filling m_filling;
};

}

void frmTree::ViewByType()
{
    showView([this] { initTreetype(nullptr, 0); });
}

void frmTree::ViewByLocation()
{
    showView([this] { initTreeLocation(nullptr, 0); });
}

void frmTree::ViewByCheckedOut()
{
    showView([this] { initTreeCheckedOut(); });
}

void frmTree::ViewByScrap()
{
    showView([this] { initTreeScrap(); });
}

void frmTree::showView(const std::function<void()> &build)
{
    const HourGlass busy;
    try {
        build();
    } catch (...) {
        // What was added so far stands; its root is selected, so that commands have something to act on.
        if (nodes().root())
            ui.tvMain->selectNode(nodes().root());
        throw;
    }
    Node *root = nodes().root();
    ui.tvMain->selectNode(root);
    ui.tvMain->expandNode(root);
    tvMain_NodeClick(root);
}

void frmTree::startTree(const QString &mode, const QString &title)
{
    nodes().clear();
    items().clear(); // what another view listed means nothing in this one
    m_listedKey.clear();
    m_mode = mode;
    ui.lblTree->setText(title);
    const bool stored = mode == "type" || mode == "location";
    ui.tvMain->setMovesAllowed(stored);
    ui.lstToolList->setMovesAllowed(stored);
    nodes().add(nullptr, ItemKeys::root, "Tools", Icons::icon("root"));
}

void frmTree::initTreetype(Node *parent, qint16 id) { initFolderTree(typeTree, parent, id); }

void frmTree::initTreeLocation(Node *parent, qint16 id) { initFolderTree(locationTree, parent, id); }

void frmTree::initFolderTree(const FolderTree &tree, Node *parent, qint16 id)
{
    Database &database = Session::database();
    const ReadScope scope(database);
    const KeyedTree::Filling filling(nodes());
    const auto hide = qScopeGuard([this] { ui.pB->finish(); });
    if (id == 0) {
        ui.pB->start(int(openRecordset(tree.count).field(u"cnt").toInteger()));
        startTree(tree.mode, tree.title);
        parent = nodes().root();
    }
    addFolderNode({{database, tree.descriptionOf}, {database, tree.childrenOf}}, parent, id);
}

// The root's node is there already; every other one is read, added and followed by what lies below it.
void frmTree::addFolderNode(const FolderStatements &statements, Node *parent, qint16 id)
{
    Node *node = parent;
    if (id != 0) {
        const QString text = statements.descriptionOf.open(id).text(u"Description");
        node = nodes().add(parent, u'l' + QString::number(id), text, Icons::folder());
        ui.pB->step();
    }
    for (Recordset rows = statements.childrenOf.open(id); !rows.atEnd(); rows.moveNext())
        if (const qint16 child = asInteger(rows.field(u"ID").toInteger()); child != 0) // 0 would be the root again
            addFolderNode(statements, node, child);
    // The rows came in order; a node that is added later goes to its place.
    node->sorted = true;
}

void frmTree::initTreeScrap()
{
    const ReadScope scope(Session::database());
    const HiddenContents hidden(*ui.tvMain);
    startTree("scrap", "Tools Scrapped");
    Node *root = nodes().root();
    root->sorted = true;
    Recordset kinds = openRecordset("SELECT distinct Scrap.LineItemTypeID, LineItemType.Code"
                                    " FROM Scrap INNER JOIN LineItemType"
                                    " ON Scrap.LineItemTypeID = LineItemType.index");
    Recordset pairs = openRecordset("SELECT distinct JoborOH,LineItemTypeID FROM Scrap");
    ui.pB->start(kinds.recordCount() + pairs.recordCount(), "Tree Items");
    const auto hide = qScopeGuard([this] { ui.pB->finish(); });
    for (; !kinds.atEnd(); kinds.moveNext()) {
        Node *kind = nodes().add(root, "l" + kinds.text(u"LineItemTypeID"), kinds.text(u"Code"), Icons::folder());
        kind->sorted = true;
        ui.pB->step();
    }
    for (; !pairs.atEnd(); pairs.moveNext()) {
        addChargeNode(nodes().find("l" + pairs.text(u"LineItemTypeID")), pairs);
        ui.pB->step();
    }
}

void frmTree::addChargeNode(Node *kind, const Recordset &pair)
{
    nodes().add(kind, "C" + pair.text(u"JobOrOH"), chargeText(pair), Icons::folder())->sorted = true;
}

void frmTree::initTreeCheckedOut()
{
    const HiddenContents hidden(*ui.tvMain);
    nodes().clear();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    startTree("checkedOut", "Tools Checked Out");
    Node *root = nodes().root();
    root->sorted = true;
    Recordset rows = openRecordset("SELECT Distinct Description FROM Tools WHERE Out=-1");
    ui.pB->start(rows.recordCount(), "Tree Items");
    const auto hide = qScopeGuard([this] { ui.pB->finish(); });
    for (qint64 counter = 1; !rows.atEnd(); rows.moveNext(), ++counter) {
        const QString key = u'l' + QString::number(asInteger(counter));
        nodes().add(root, key, rows.text(u"Description"), Icons::folder())->sorted = true;
        ui.pB->step();
    }
}

// What was charged to a kind is read anew every time its node is opened. A step that fails is skipped: the same
// number may be a job's and an operation's, and the second one finds its key taken.
void frmTree::tvMain_Expand(Node *node)
{
    if (m_mode != "scrap" || !node->parent || ui.tvMain->draggedNode())
        return;
    const auto skippingErrors = [](const std::function<void()> &step) {
        try {
            step();
        } catch (const std::exception &) {
        }
    };
    skippingErrors([&] {
        Recordset pairs = openRecordset("SELECT distinct JoborOH,LineItemTypeID FROM Scrap WHERE LineItemTypeId="
                                        + ItemKeys::numberOf(node->key));
        nodes().removeChildren(node);
        for (; !pairs.atEnd(); pairs.moveNext())
            skippingErrors([&] { addChargeNode(node, pairs); });
    });
}
