#include "explorer/Panes.h"

#include "common/ItemId.h"
#include "db/Session.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"

#include <QScopeGuard>
#include <QTimer>

#include <set>

Panes::Panes(Ui::frmTree &ui, bool &treeHasFocus) : m_ui(ui), m_treeHasFocus(treeHasFocus) { }

Panes::Hidden::Hidden(Panes &panes) : m_tree(*panes.m_ui.tvMain), m_filling(panes.nodes())
{
    m_tree.viewport()->hide();
}

Panes::Hidden::~Hidden() { m_tree.viewport()->show(); }

KeyedTree::Node *Panes::begin(const View &view)
{
    nodes().clear();
    items().clear(); // what another view listed means nothing in this one
    m_listedKey.clear();
    m_view = &view;
    m_begun = true;
    m_ui.lblTree->setText(view.row.title);
    m_ui.tvMain->setMovesAllowed(view.hasMoves());
    m_ui.lstToolList->setMovesAllowed(view.hasMoves());
    return nodes().add(nullptr, ItemId().nodeKey(), "Tools", Icons::icon("root"));
}

void Panes::addRows(const QString &statement, const std::function<ListItem(const Recordset &)> &itemOf)
{
    Recordset rows = openRecordset(statement);
    if (rows.isEmpty())
        return;
    progress().start(rows.recordCount());
    for (; !rows.atEnd(); rows.moveNext()) {
        items().add(itemOf(rows));
        progress().step();
    }
}

void Panes::show(const View &view)
{
    const HourGlass busy;
    m_begun = false;
    if (!m_refreshMark)
        m_refreshMark.emplace(*m_ui.cmdRefresh);
    m_refreshMark->begin(view.row.tables);
    try {
        tell(view.buildTree(*this));
    } catch (...) {
        // What was added so far stands and can be used.
        if (m_begun) {
            try {
                listRoot();
            } catch (const std::exception &) { // the first error is the one to tell
            }
        }
        throw;
    }
    listRoot();
}

void Panes::listRoot()
{
    Node *root = nodes().root();
    m_ui.tvMain->selectNode(root);
    m_ui.tvMain->expandNode(root);
    list(root);
}

void Panes::rebuild()
{
    const Place before = place();
    const QStringList expanded = expandedNodes();
    std::exception_ptr problem;
    try {
        show(*m_view);
    } catch (...) {
        if (!m_begun)
            throw;
        problem = std::current_exception(); // the place may be in what stands
    }
    for (const QString &key : expanded)
        if (const Node *node = nodes().find(key))
            m_ui.tvMain->expandNode(node);
    comeBack(before);
    if (problem)
        std::rethrow_exception(problem);
}

void Panes::list(const Node *node)
{
    setInCharge(true);
    m_ui.lstToolList->scrollToTop();
    const HourGlass busy;
    const ReadScope scope(Session::database());
    const KeyedList::Filling filling(items());
    const auto hide = qScopeGuard([this] { progress().finish(); });
    items().clear();
    m_listedKey = node->key;
    showHeading(node);
    m_view->fillList(*this, node);
    showHint();
}

void Panes::setInCharge(bool tree)
{
    m_treeHasFocus = tree;
    m_ui.tvMain->setInCharge(tree);
    m_ui.lstToolList->setInCharge(!tree);
}

void Panes::showHint()
{
    const QString hint = nodes().root()->children.empty() ? m_view->row.emptyHint : "";
    m_ui.tvMain->setHint(hint);
    m_ui.lstToolList->setHint(hint);
}

void Panes::relist() { comeBack(place()); }

void Panes::showHeading(const Node *node)
{
    m_ui.lblList->setText("Contents of '" + KeyedTree::fullPath(node).left(m_view->row.headingLength) + "'");
}

void Panes::followListed()
{
    if (const Node *node = listed(); node && node != m_ui.tvMain->selectedNode())
        m_ui.tvMain->selectNode(node);
}

void Panes::openNode(Node *node)
{
    if (!m_view->openNode(*this, node) || m_listedKey.isEmpty())
        return;
    if (listed()) {
        followListed();
    } else { // it lay below and is gone
        m_ui.tvMain->selectNode(node);
        list(node);
    }
}

Panes::Place Panes::place() const
{
    Place place{.path = {}, .selected = selectedItems(), .nextKey = {}, .treeHasFocus = m_treeHasFocus};
    for (const Node *node = listed(); node && node->parent; node = node->parent)
        place.path.push_back(thingOf(*node));
    const std::vector<int> rows = m_ui.lstToolList->selectedRows();
    if (!rows.empty() && rows.back() + 1 < items().count())
        place.nextKey = items().item(rows.back() + 1).key;
    else if (!rows.empty() && rows.front() > 0)
        place.nextKey = items().item(rows.front() - 1).key;
    return place;
}

QStringList Panes::expandedNodes() const
{
    QStringList keys;
    const std::function<void(const Node *)> add = [&](const Node *node) {
        if (!m_ui.tvMain->isExpanded(nodes().indexOf(node)))
            return;
        keys.append(node->key);
        for (const auto &child : node->children)
            add(child.get());
    };
    if (nodes().root())
        add(nodes().root());
    return keys;
}

void Panes::comeBack(const Place &place)
{
    const Node *node = nullptr;
    bool sameFolder = place.path.empty();
    for (const Thing &thing : place.path) {
        node = m_view->sameNode(nodes(), thing);
        sameFolder = node && &thing == &place.path.front();
        if (node)
            break;
    }
    if (!node)
        node = nodes().root();
    const QString key = node->key;
    m_ui.tvMain->selectNode(node);
    node = nodes().find(key); // opening what it lies in may have read it anew
    list(node ? node : nodes().root());
    if (!node || !sameFolder)
        return;
    // A tool that was lent meanwhile is the same tool.
    const auto sign = [](const ItemId &id) {
        return std::pair(id.isTool() ? ItemId::toolInStock : id.kind, id.number);
    };
    std::set<std::pair<ItemId::Kind, qint64>> before;
    for (const Thing &thing : place.selected)
        before.insert(sign(thing.id));
    const bool found = m_ui.lstToolList->selectRowsIf(
        [&](int row) { return before.count(sign(m_view->idOf(items().item(row)))) > 0; });
    if (!found && !before.empty() && !place.treeHasFocus)
        selectItem(place.nextKey);
    setInCharge(place.treeHasFocus);
}

void Panes::goTo(const QString &nodeKey)
{
    const Node *sought = nodes().find(nodeKey);
    if (!sought)
        return;
    m_ui.tvMain->selectNode(sought);
    if (const Node *node = m_ui.tvMain->selectedNode()) {
        m_ui.tvMain->scrollTo(nodes().indexOf(node));
        list(node);
    }
}

bool Panes::showPath(const QString &path)
{
    const QStringList parts = path.split('\\');
    const Node *node = nodes().root();
    if (!node || parts.first() != node->text)
        return false;
    for (const QString &part : parts.sliced(1)) {
        m_ui.tvMain->expandNode(node); // reads the children where a view reads them late
        const auto found = std::find_if(node->children.begin(), node->children.end(),
                                        [&](const auto &child) { return child->text == part; });
        if (found == node->children.end())
            return false;
        node = found->get();
    }
    goTo(node->key);
    return true;
}

bool Panes::selectItem(const QString &key)
{
    const int row = items().find(key);
    if (row < 0)
        return false;
    m_ui.lstToolList->selectRow(row);
    m_ui.lstToolList->scrollTo(items().index(row, 0));
    setInCharge(false);
    return true;
}

Thing Panes::thingOf(const Node &node) const
{
    return {.id = m_view->idOf(node), .text = node.text, .parent = node.parent ? m_view->idOf(*node.parent) : ItemId()};
}

Thing Panes::thingOf(const ListItem &item) const
{
    const Node *folder = listed();
    return {.id = m_view->idOf(item), .text = item.text, .parent = folder ? m_view->idOf(*folder) : ItemId()};
}

View::Things Panes::selectedNode() const
{
    const Node *node = m_ui.tvMain->selectedNode();
    return node ? View::Things{thingOf(*node)} : View::Things();
}

View::Things Panes::selectedItems() const
{
    View::Things things;
    for (const int row : m_ui.lstToolList->selectedRows())
        things.push_back(thingOf(items().item(row)));
    return things;
}

QStringList Panes::itemKeys() const
{
    QStringList keys;
    for (int row = 0; row < items().count(); ++row)
        keys.append(items().item(row).key);
    return keys;
}

void Panes::selectNew(const QStringList &before)
{
    const QSet<QString> known(before.begin(), before.end());
    if (m_ui.lstToolList->selectRowsIf([&](int row) { return !known.contains(items().item(row).key); }))
        setInCharge(false);
}

void Panes::removed(const View::Things &things)
{
    for (const Thing &thing : things) {
        Node *node = thing.id.kind == ItemId::folder ? nodes().find(thing.id.nodeKey()) : nullptr;
        if (!node)
            continue;
        if (const Node *shown = listed(); shown && KeyedTree::isWithin(shown, node))
            m_listedKey = node->parent->key;
        nodes().remove(node);
    }
    relist();
}

void Panes::moved(const View::Things &things, const QString &target)
{
    for (const Thing &thing : things)
        if (Node *node = thing.id.kind == ItemId::folder ? nodes().find(thing.id.nodeKey()) : nullptr)
            nodes().move(node, nodes().find(target));
    relist();
    if (const Node *node = nodes().find(target)) {
        m_ui.tvMain->selectNode(node);
        m_ui.tvMain->expandNode(node);
        list(node);
    }
}

void Panes::renamed(Node *node, const QString &text)
{
    nodes().setText(node, text);
    relist(); // its name stands in the heading, and in columns of the rows
}

// Later, when windows that are just being opened are there; the same remark is made once.
void Panes::tell(const QString &remark)
{
    if (isStarted && remark != std::exchange(m_told, remark) && !remark.isEmpty())
        QTimer::singleShot(0, m_ui.tvMain, [remark] { inform(remark); });
}
