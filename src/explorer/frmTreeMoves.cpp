// How the user gets about in the explorer's tree and list, and moves things from one folder to another.
#include "common/ItemId.h"
#include "common/MainFrame.h"
#include "explorer/frmTree.h"
#include "explorer/frmTreeSelect.h"

#include <QPointer>
#include <QScopeGuard>

void frmTree::tvMain_NodeClick(Node *node) { m_panes.list(node); }

void frmTree::tvMain_PopUp(Node *node, const QPoint &globalPosition)
{
    m_panes.setInCharge(true);
    const QPointer<frmTree> open(this);
    if (const QString menu = view()->popUpOf(*node); !menu.isEmpty())
        theMainFrame().popUp(menu, globalPosition);
    if (open)
        m_panes.followListed();
}

void frmTree::lstToolList_PopUp(const QPoint &globalPosition)
{
    if (const QString menu = view()->popUpOf(*selectedItem()); !menu.isEmpty())
        theMainFrame().popUp(menu, globalPosition);
}

void frmTree::lstToolList_DblClick()
{
    if (!selectedItem()) // a press with Ctrl takes the selection away
        return;
    const ListItem item = *selectedItem();
    if (item.icon != ItemIcon::folder && item.icon != ItemIcon::openFolder)
        return;
    if (const Node *node = view()->nodeOf(m_panes.nodes(), item))
        m_panes.goTo(node->key);
}

void frmTree::lstToolList_DragDrop()
{
    const Node *target = ui.tvMain->dropHighlight();
    const View::Things things = m_panes.selectedItems();
    if (!ui.lstToolList->DragArmed || !target || things.empty())
        return;
    move(things, target, false);
    ui.lstToolList->DragItem = -1;
    ui.lstToolList->DragArmed = false;
}

void frmTree::tvMain_DragDrop(Node *dragged)
{
    if (const Node *target = ui.tvMain->dropHighlight())
        move({m_panes.thingOf(*dragged)}, target, true);
}

void frmTree::move(const View::Things &things, const Node *target, bool fromTree)
{
    const Thing to = m_panes.thingOf(*target);
    carryOut([&] { return view()->move(things, to, fromTree); }, [&] { m_panes.moved(things, to.id.nodeKey()); });
}

// What a drop does, without a mouse.
void frmTree::moveToPicked()
{
    const bool tree = TreeHasFocus;
    const View::Things things = tree ? m_panes.selectedNode() : m_panes.selectedItems();
    if (!view()->hasMoves() || things.empty() || things.front().id.kind == ItemId::root)
        return;
    const bool anyTool =
        std::any_of(things.begin(), things.end(), [](const Thing &thing) { return thing.id.isTool(); });
    using Root = frmTreeSelect::Root;
    const auto picked = frmTreeSelect::pick(view()->mode(), this, anyTool ? Root::Refused : Root::Allowed);
    if (!picked)
        return;
    const ItemId id{picked->id == 0 ? ItemId::root : ItemId::folder, picked->id};
    if (const Node *target = m_panes.nodes().find(id.nodeKey()))
        move(things, target, tree);
    else
        m_panes.rebuild(); // the picker read what this tree does not show yet
}

// The explorer comes to the front; the find dialog stays open behind it.
bool frmTree::goToHit(const ListItem &hit)
{
    // By number, as siblings may be called alike, if that is the node meant.
    if (const Node *node = m_panes.nodes().find(hit.nodeKey); node && KeyedTree::fullPath(node) == hit.path)
        m_panes.goTo(hit.nodeKey);
    else if (!m_panes.showPath(hit.path))
        return false;
    theMainFrame().bringToFront(this);
    ui.tvMain->setFocus();
    if (hit.icon == ItemIcon::folder)
        return true;
    // A tool that was found is listed under the key of its state.
    const ItemId id = view()->idOf(hit);
    for (const ItemId &state : {id, ItemId{ItemId::toolInStock, id.number}, ItemId{ItemId::toolOut, id.number}})
        if (m_panes.selectItem(state.itemKey())) {
            focusList();
            break;
        }
    return true;
}
