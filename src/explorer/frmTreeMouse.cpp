// What clicks, pop-ups and drops in the explorer's tree and list lead to.
#include "common/ItemId.h"
#include "common/MainFrame.h"
#include "explorer/frmTree.h"

#include <QPointer>

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
