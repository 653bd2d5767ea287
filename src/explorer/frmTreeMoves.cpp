// How the user gets about in the explorer's tree and list, and moves things from one folder to another.
#include "common/ItemKeys.h"
#include "common/MainFrame.h"
#include "common/ProgramState.h"
#include "db/Session.h"
#include "explorer/frmTree.h"
#include "explorer/frmTreeSelect.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"

#include <QScopeGuard>

namespace {

bool confirmMove(const KeyedTree::Node *target)
{
    return msgBox({.text = "Move the items to " + target->text + "?",
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No})
        == QMessageBox::Yes;
}

void refuseOwnDescendant() { msgBox({.text = "A node can't be made a child of its own children."}); }

}

void frmTree::tvMain_PopUp(Node *node, const QPoint &globalPosition)
{
    ProgramState::TreeHasFocus = true;
    if (m_mode == "type")
        theMainFrame().popUp("mnuTreePopType", globalPosition);
    else if (m_mode == "location")
        theMainFrame().popUp("mnuTreePopLoc", globalPosition);
    else if (m_mode == "scrap" && node->parent)
        theMainFrame().popUp("mnuTreePopScrap", globalPosition);
}

void frmTree::lstToolList_PopUp(const QPoint &globalPosition)
{
    const ListItem item = *selectedItem();
    if (item.key.startsWith('r') && item.icon != ItemIcon::toolOut)
        theMainFrame().popUp("mnuTreePopTool", globalPosition);
    else if (item.key.startsWith('j'))
        theMainFrame().popUp("mnuListPopScrap", globalPosition);
    else if (item.key.startsWith("co") && (m_mode == "type" || m_mode == "location" || item.icon == ItemIcon::toolOut))
        theMainFrame().popUp("mnuListCheckIn", globalPosition);
}

void frmTree::lstToolList_DblClick()
{
    if (!selectedItem()) // a press with Ctrl takes the selection away
        return;
    const ListItem item = *selectedItem();
    if (item.icon != ItemIcon::folder && item.icon != ItemIcon::openFolder)
        return;
    if (const Node *node = nodeOfFolder(item))
        goToNode(node->key);
}

// List and tree number their folders apart in the two views that group records.
KeyedTree::Node *frmTree::nodeOfFolder(const ListItem &folder)
{
    const QString id = ItemKeys::numberOf(folder.key);
    if (m_mode == "type" || m_mode == "location")
        return nodes().find("l" + id);
    if (m_mode == "scrap")
        return nodes().find((folder.key.startsWith('s') ? "l" : "C") + id);
    const auto &descriptions = nodes().root()->children;
    const auto found = std::find_if(descriptions.begin(), descriptions.end(),
                                    [&](const auto &node) { return node->text == folder.text; });
    return found == descriptions.end() ? nullptr : found->get();
}

// In the two stored trees, whose root stands for the folder number 0.
KeyedTree::Node *frmTree::nodeOfFolder(int id)
{
    return id == 0 ? nodes().root() : nodes().find(QStringLiteral("l%1").arg(id));
}

void frmTree::lstToolList_DragDrop()
{
    Node *target = ui.tvMain->dropHighlight();
    if (!ui.lstToolList->DragArmed || !target || !selectedItem())
        return;
    QStringList tools, folders;
    constexpr int employeeColumn = 5;
    for (const int row : ui.lstToolList->selectedRows()) {
        const ListItem &item = items().item(row);
        if (!item.subItem(employeeColumn).isEmpty() || item.key.startsWith("co")) {
            msgBox({.text = "You must Check In the tool before moving."});
            return;
        }
        (item.key.startsWith('r') ? tools : folders).append(ItemKeys::numberOf(item.key));
    }
    const QString targetId = ItemKeys::numberOf(target->key);
    if (folders.contains(targetId) || target->key == m_listedKey)
        return;
    for (const QString &folder : std::as_const(folders)) {
        const Node *moved = nodes().find("l" + folder);
        if (moved && KeyedTree::isWithin(target, moved)) {
            refuseOwnDescendant();
            return;
        }
    }
    if (!confirmMove(target))
        return;
    if (!tools.isEmpty())
        execute("UPDATE tools SET " + m_mode + "=" + targetId + " WHERE ID IN (" + tools.join(',') + ")");
    if (!folders.isEmpty())
        execute("UPDATE " + m_mode + "s " + " SET parent=" + targetId + " WHERE ID IN (" + folders.join(',') + ")");

    Node *listed = nodes().find(m_listedKey);
    for (const QString &folder : std::as_const(folders))
        if (Node *moved = nodes().find("l" + folder))
            nodes().move(moved, target);
    if (listed)
        tvMain_NodeClick(listed);
    showMoved(target);
    ui.lstToolList->DragItem = -1;
    ui.lstToolList->DragArmed = false;
}

void frmTree::tvMain_DragDrop(Node *dragged)
{
    Node *target = ui.tvMain->dropHighlight();
    if (!target || target == dragged || target == dragged->parent)
        return;
    if (KeyedTree::isWithin(target, dragged)) {
        refuseOwnDescendant();
        return;
    }
    if (!confirmMove(target))
        return;
    const QString ids = ItemKeys::numberOf(target->key) + " WHERE ID=" + ItemKeys::numberOf(dragged->key);
    execute(m_mode == "type" ? "UPDATE types SET parent=" + ids : "UPDATE locations SET parent=" + ids);
    nodes().move(dragged, target);
    showMoved(target);
}

// What a drop does, without a mouse.
void frmTree::moveToPicked()
{
    const bool tree = ProgramState::TreeHasFocus;
    const Node *node = ui.tvMain->selectedNode();
    if (!ui.tvMain->dragEnabled() || (tree ? !node || !node->parent : !selectedItem()))
        return;
    const auto rows = ui.lstToolList->selectedRows();
    const auto isTool = [this](int row) { return items().item(row).icon != ItemIcon::folder; };
    const bool anyTool = !tree && std::any_of(rows.begin(), rows.end(), isTool);
    using Root = frmTreeSelect::Root;
    const auto picked = frmTreeSelect::pick(m_mode, this, anyTool ? Root::Refused : Root::Allowed);
    if (!picked)
        return;
    ui.tvMain->setDropHighlight(nodeOfFolder(picked->id));
    const auto unmark = qScopeGuard([this] { ui.tvMain->setDropHighlight(nullptr); });
    if (tree) {
        tvMain_DragDrop(ui.tvMain->selectedNode());
    } else {
        ui.lstToolList->DragArmed = true;
        lstToolList_DragDrop();
    }
}

void frmTree::showMoved(Node *target)
{
    ui.tvMain->selectNode(target);
    ui.tvMain->expandNode(target);
    tvMain_NodeClick(target);
}

void frmTree::addChildNode(const QString &mode, int parentId, int id, const QString &text)
{
    if (mode != m_mode)
        return;
    Node *parent = nodeOfFolder(parentId);
    if (!parent)
        return;
    nodes().add(parent, QStringLiteral("l%1").arg(id), text, Icons::folder())->sorted = true;
    ui.tvMain->expandNode(parent);
}

void frmTree::renameNode(const QString &mode, int id, const QString &text)
{
    Node *node = mode == m_mode ? nodes().find(QStringLiteral("l%1").arg(id)) : nullptr;
    if (!node)
        return;
    nodes().setText(node, text);
    if (const Node *listed = nodes().find(m_listedKey))
        showListHeading(listed);
}

bool frmTree::showPath(const QString &path)
{
    const QStringList parts = path.split('\\');
    Node *node = nodes().root();
    if (!node || parts.first() != node->text)
        return false;
    for (const QString &part : parts.sliced(1)) {
        ui.tvMain->expandNode(node); // reads the children where a view reads them late
        const auto found = std::find_if(node->children.begin(), node->children.end(),
                                        [&](const auto &child) { return child->text == part; });
        if (found == node->children.end())
            return false;
        node = found->get();
    }
    goToNode(node->key);
    return true;
}

void frmTree::goToNode(const QString &key)
{
    const Node *sought = nodes().find(key);
    if (!sought)
        return;
    ui.tvMain->selectNode(sought);
    if (Node *node = ui.tvMain->selectedNode()) {
        ui.tvMain->scrollTo(nodes().indexOf(node));
        tvMain_NodeClick(node);
    }
}

bool frmTree::selectItem(const QString &key)
{
    const int row = items().find(key);
    if (row < 0)
        return false;
    ui.lstToolList->selectRow(row);
    ui.lstToolList->scrollTo(items().index(row, 0));
    ProgramState::TreeHasFocus = false;
    return true;
}
