// The explorer's commands: each says why it cannot act on what is selected, or opens what does the work.
#include "catalogue/FolderEditor.h"
#include "catalogue/frmToolNewEdit.h"
#include "common/ItemKeys.h"
#include "common/MainFrame.h"
#include "common/ProgramState.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "explorer/clsTools.h"
#include "explorer/frmFind.h"
#include "explorer/frmTree.h"
#include "explorer/frmTreeSelect.h"
#include "platform/gui/Handler.h"
#include "platform/gui/MsgBox.h"
#include "reports/QueryForm.h"
#include "reports/QueryKind.h"
#include "transactions/MainSubs.h"
#include "transactions/frmScrap.h"

#include <QCursor>

namespace {

clsTools::Kind kindOf(const QString &mode)
{
    return mode == "type" ? clsTools::Kind::types : clsTools::Kind::locations;
}

bool confirmed(const QString &text)
{
    return msgBox({.text = text,
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No,
                   .defaultButton = QMessageBox::No})
        == QMessageBox::Yes;
}

const QString nothingToDelete = QStringLiteral("Nothing to delete. Please select the item(s) to delete first.");
const QString oneTool = QStringLiteral("You are about to delete the selected tool.\n"
                                       "All checked in and checked out history will also be removed.\n"
                                       "This can not be undone.\n"
                                       " Are you sure you want to continue?");
const QString severalTools = QStringLiteral("You are about to delete selected tool(s) on the list.\n"
                                            "All checked in and checked out history will also be removed.\n"
                                            "This can not be undone. Are you sure?");

void deleteAll(const QString &mode, const QList<qint32> &folders, const QList<qint32> &tools)
{
    const HourGlass busy;
    const QString problem = clsTools().Delete(kindOf(mode), folders, tools);
    if (!problem.isEmpty())
        msgBox({.text = problem, .icon = QMessageBox::Critical});
}

}

// Without a selected item only the tree is left to act on.
bool frmTree::actsOnTree() const { return ProgramState::TreeHasFocus || !selectedItem(); }

void frmTree::cmdScrapTool_Click()
{
    if (actsOnTree() || selectedItem()->icon == ItemIcon::folder) {
        inform("Please select a tool to scrap.");
        return;
    }
    if (selectedItem()->key.startsWith('j'))
        inform("The selected tool has already been scrapped.");
    else
        frmScrap::showModal();
}

void frmTree::cmdNew_MouseDown()
{
    if (m_mode == "scrap" || m_mode == "checkedOut") {
        inform("To add a tool use the New button while in the View by Type or View by Location mode. ");
        return;
    }
    const bool byMouse = QGuiApplication::mouseButtons() & Qt::LeftButton;
    const QPoint place = byMouse ? QCursor::pos() : ui.cmdNew->mapToGlobal(ui.cmdNew->rect().bottomLeft());
    ui.cmdNew->setDown(false); // the menu takes the button's release
    theMainFrame().popUp("mnuTreeNew", place, {m_mode == "type" ? "mnuTreeNewLocation" : "mnuTreeNewType"});
}

void frmTree::mdi_TreeNewTool()
{
    QString id, name;
    if (actsOnTree()) {
        if (const Node *node = ui.tvMain->selectedNode(); node && node->parent) {
            id = ItemKeys::numberOf(node->key);
            name = KeyedTree::fullPath(node);
        }
    } else {
        // The folder is found by what the item is called: a tool's own folder, a folder's parent.
        const ListItem item = *selectedItem();
        const Recordset rows = item.icon == ItemIcon::folder
            ? openRecordset("Select Parent FROM " + m_mode + "s where Description = " + quoted(item.text))
            : openRecordset("Select " + m_mode + " as ID FROM Tools WHERE Description = " + quoted(item.text));
        id = rows.isEmpty() ? QString() : rows.at(0, 0).toText();
        if (!id.isEmpty()) {
            const Recordset folder =
                openRecordset("Select Description from " + m_mode + "s where ID = " + id + " ORDER BY ID ASC");
            name = folder.isEmpty() ? QString() : folder.text(u"Description");
        }
    }
    if (name.isEmpty()) {
        inform("Please select a tool " + m_mode + " first.");
        return;
    }
    const bool byType = m_mode == "type";
    const qint32 folder = id.toInt();
    frmToolNewEdit::Startup("New", byType, !byType, 0, byType ? folder : 0, byType ? 0 : folder,
                            byType ? name : QString(), byType ? QString() : name);
}

void frmTree::mdi_TreeNewType() { newFolder(FolderKind::type); }

void frmTree::mdi_TreeNewLocation() { newFolder(FolderKind::location); }

void frmTree::newFolder(const FolderKind &kind)
{
    const Node *parent = ui.tvMain->selectedNode() ? ui.tvMain->selectedNode() : nodes().root();
    if (FolderEditor::Startup(kind, "New", 0, parent->text, ItemKeys::numberOf(parent->key).toInt()))
        listSelectedNode();
}

void frmTree::cmdEdit_PopUp()
{
    theMainFrame().popUp("mnuTreeEdit", QCursor::pos(), {m_mode == "type" ? "mnuTreeEditLocation" : "mnuTreeEditType"});
}

void frmTree::cmdEdit_Click()
{
    const ListItem *item = ProgramState::TreeHasFocus ? nullptr : selectedItem();
    Node *node = ui.tvMain->selectedNode();
    if (!item && !node)
        inform("Please select an item first.");
    else if (m_mode == "scrap")
        inform(item && item->key.startsWith('j') ? "A scrapped tool cannot be edited!" : "This node cannot be edited.");
    else if (m_mode == "checkedOut" || (item && item->key.startsWith("co")))
        inform("A checked out tool cannot be edited!");
    else if (item && item->key.startsWith('r'))
        TreeEditTool();
    else if (item)
        editFolder(ItemKeys::numberOf(item->key).toInt(), item->text);
    else if (!node->parent)
        inform("You cannot edit this Node");
    else
        editFolder(ItemKeys::numberOf(node->key).toInt(), node->text);
}

void frmTree::editFolder(int id, const QString &text)
{
    const QString selected = actsOnTree() ? QString() : selectedItem()->key;
    if (!FolderEditor::Startup(m_mode == "type" ? FolderKind::type : FolderKind::location, "Edit", id, text, 0)
        || selected.isEmpty())
        return;
    listSelectedNode();
    selectItem(selected);
}

void frmTree::TreeEditTool()
{
    const ListItem *item = selectedItem();
    if (!item || item->icon == ItemIcon::folder) {
        inform("Please select an item first.");
        return;
    }
    if (!item->key.startsWith('r')) {
        inform(item->key.startsWith('j') ? "A scrapped tool cannot be edited!"
                                         : "A checked out tool cannot be edited!");
        return;
    }
    const QString key = item->key;
    frmToolNewEdit::Startup("Edit", m_mode == "type", m_mode == "location", ItemKeys::numberOf(key).toInt(), 0, 0, {},
                            {});
    selectItem(key);
}

void frmTree::cmdDelete_Click()
{
    if (!ProgramState::TreeHasFocus && !selectedItem()) {
        inform("Please select a tool to delete.");
        return;
    }
    TreeDeleteItems();
}

void frmTree::TreeDeleteItems()
{
    Node *node = ui.tvMain->selectedNode();
    if (ProgramState::TreeHasFocus && node) {
        deleteNode(node);
        return;
    }
    const std::vector<int> rows = ui.lstToolList->selectedRows();
    if (rows.empty()) {
        msgBox({.text = nothingToDelete});
        return;
    }
    const auto anyKeyBegins = [&](const char *prefix) {
        return std::any_of(rows.begin(), rows.end(), [&](int row) { return items().item(row).key.startsWith(prefix); });
    };
    if (anyKeyBegins("co"))
        msgBox({.text = m_mode == "checkedOut" ? "You must check tools in before deleting."
                                               : "You must Check In the tool before deleting."});
    else if (m_mode == "scrap")
        deleteScrapItems(rows);
    else
        deleteItems(rows);
}

void frmTree::deleteNode(Node *node)
{
    const QString id = ItemKeys::numberOf(node->key);
    if (!node->parent) {
        msgBox({.text = "You cannot delete the Tools node."});
    } else if (m_mode == "checkedOut") {
        msgBox({.text = "You must check tools in before deleting."});
    } else if (m_mode == "scrap") {
        if (node->key.startsWith('l'))
            msgBox({.text = "Scrapped tools must be deleted individually."});
        else
            purge(scrapIdsOf(id, ItemKeys::numberOf(node->parent->key)), severalTools);
    } else if (!node->children.empty()) {
        msgBox({.text = "You cannot delete " + m_mode + "s which contain sub folders."});
    } else if (mayDeleteFolder(id) && confirmed(folderQuestion())) {
        deleteAll(m_mode, {id.toInt()}, {});
        removeDeletedFolders({id});
    }
}

// Tools and empty folders of the two stored trees.
void frmTree::deleteItems(const std::vector<int> &rows)
{
    QStringList folders;
    QList<qint32> tools;
    for (const int row : rows) {
        const ListItem &item = items().item(row);
        const QString id = ItemKeys::numberOf(item.key);
        if (item.key.startsWith('r')) {
            tools.append(id.toInt());
            continue;
        }
        if (const Node *node = nodes().find("l" + id); node && !node->children.empty()) {
            msgBox({.text = "Cannot delete folders that contain sub folders"});
            return;
        }
        if (!mayDeleteFolder(id))
            return;
        folders.append(id);
    }
    const QString question = rows.size() > 1 ? severalTools : tools.isEmpty() ? folderQuestion() : oneTool;
    if (!confirmed(question))
        return;
    QList<qint32> folderIds;
    for (const QString &id : std::as_const(folders))
        folderIds.append(id.toInt());
    deleteAll(m_mode, folderIds, tools);
    removeDeletedFolders(folders);
}

QString frmTree::folderQuestion() const
{
    return QString("You are about to delete a tool ") + (m_mode == "type" ? "type" : "location")
        + ". This can not be undone. Are you sure?";
}

bool frmTree::mayDeleteFolder(const QString &id) const
{
    const Recordset tools = m_mode == "type" ? openRecordset("SELECT Tools.Id"
                                                             " FROM Tools"
                                                             " WHERE Tools.Type="
                                                             + id)
                                             : openRecordset("SELECT Tools.Id"
                                                             " FROM Tools"
                                                             " WHERE Tools.Location="
                                                             + id);
    if (!tools.isEmpty())
        inform("You cannot delete " + m_mode + "s which contain tools.");
    return tools.isEmpty();
}

// The place in list and tree stays: the next item is current, or the folder above one that is gone.
void frmTree::removeDeletedFolders(const QStringList &ids)
{
    const int row = ui.lstToolList->selectedRow();
    const bool inTree = ProgramState::TreeHasFocus;
    for (const QString &id : ids) {
        const QString table = m_mode + "s";
        Node *node = nodes().find("l" + id);
        if (!node || !openRecordset("Select ID from " + table + " where ID = " + id).isEmpty())
            continue;
        if (node == ui.tvMain->selectedNode())
            ui.tvMain->selectNode(node->parent);
        nodes().remove(node);
    }
    listSelectedNode();
    ProgramState::TreeHasFocus = inTree;
    if (!inTree && itemCount() > 0)
        ui.lstToolList->selectRow(qBound(0, row, itemCount() - 1));
}

void frmTree::deleteScrapItems(const std::vector<int> &rows)
{
    QList<qint32> ids;
    bool folders = false;
    for (const int row : rows) {
        const ListItem &item = items().item(row);
        const QString id = ItemKeys::numberOf(item.key);
        if (item.key.startsWith('s')) {
            msgBox({.text = "Scrapped tools must be deleted individually."});
            return;
        }
        folders = folders || item.key.startsWith('l');
        if (item.key.startsWith('j'))
            ids.append(id.toInt());
        else if (item.key.startsWith('l')) // a job or operation under the kind that is listed
            ids.append(scrapIdsOf(id, ItemKeys::numberOf(m_listedKey)));
    }
    purge(ids, folders ? severalTools : oneTool);
}

QList<qint32> frmTree::scrapIdsOf(const QString &jobOrOH, const QString &lineItemTypeId) const
{
    QList<qint32> ids;
    Recordset rows = openRecordset("SELECT Id FROM Scrap Where JobOrOh = " + jobOrOH
                                   + " And LineItemTypeID = " + lineItemTypeId + " ORDER BY ID");
    for (; !rows.atEnd(); rows.moveNext())
        ids.append(qint32(rows.field(u"Id").toInteger()));
    return ids;
}

void frmTree::purge(const QList<qint32> &scrapIds, const QString &question)
{
    if (scrapIds.isEmpty()) {
        msgBox({.text = nothingToDelete});
        return;
    }
    if (!confirmed(question))
        return;
    const int row = ui.lstToolList->selectedRow();
    bool allDeleted = true;
    {
        const HourGlass busy;
        for (const qint32 id : scrapIds)
            allDeleted = MainSubs::PurgeScrapped("Tool", id) && allDeleted;
    }
    msgBox({.text =
                allDeleted ? "Selected Scrapped Tool(s) deleted." : "One or more Scrapped Tools could not be deleted"});
    const bool inTree = ProgramState::TreeHasFocus;
    if (Node *node = ui.tvMain->selectedNode(); node->key.startsWith('l'))
        tvMain_Expand(node); // a job without tools is none of its kind's any more
    listSelectedNode();
    if (itemCount() == 0) {
        rebuildView(); // the last one of its job: the folder goes with it
        return;
    }
    ProgramState::TreeHasFocus = inTree;
    if (!inTree)
        ui.lstToolList->selectRow(qBound(0, row, itemCount() - 1));
}

void frmTree::cmdQuery_Click()
{
    if (m_mode == "checkedOut")
        QueryForm::showModal(QueryKind::frmQueryCheckedOut);
    else if (m_mode == "scrap")
        QueryForm::showModal(QueryKind::frmQueryScrap);
    else
        QueryForm::showModal(QueryKind::frmQueryTypeLoc);
}

void frmTree::cmdFind_Click()
{
    frmFind &find = frmFind::instance();
    find.Startup();
    find.show();
    find.raise();
    find.activateWindow();
}

void frmTree::cmdRefresh_Click()
{
    if (!ui.tvMain->selectedNode() && !selectedItem()) {
        inform("No item selected in tree or list");
        return;
    }
    rebuildView();
}

std::optional<PickedFolder> frmTree::pickFolder(const QString &mode, QWidget *parent)
{
    return frmTreeSelect::pick(mode, parent);
}
