// The explorer's commands: each says why it cannot act on what is selected, or opens what does the work.
#include "catalogue/FolderEditor.h"
#include "catalogue/frmToolNewEdit.h"
#include "common/ItemId.h"
#include "common/MainFrame.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "explorer/frmFind.h"
#include "explorer/frmTree.h"
#include "explorer/frmTreeSelect.h"
#include "platform/gui/MsgBox.h"
#include "queries/QueryForm.h"
#include "reports/ReportRun.h"
#include "transactions/frmScrap.h"

#include <QCursor>

// Without a selected item only the tree is left to act on.
bool frmTree::actsOnTree() const { return TreeHasFocus || !selectedItem(); }

// What a command adds to a node is shown there, also when a pop-up was opened over another one.
void frmTree::listChosenNode()
{
    if (const Node *node = ui.tvMain->selectedNode(); node && node != m_panes.listed())
        m_panes.list(node);
}

// What a command changed is shown; what others changed meanwhile, or what broke off half-way, is read anew.
void frmTree::carryOut(const std::function<View::Outcome()> &command, const std::function<void()> &show)
{
    View::Outcome outcome;
    try {
        outcome = command();
    } catch (...) {
        m_panes.rebuild();
        throw;
    }
    if (outcome == View::Outcome::done)
        show();
    else if (outcome == View::Outcome::stale)
        m_panes.rebuild();
}

void frmTree::cmdScrapTool_Click()
{
    if (actsOnTree() || selectedItem()->icon == ItemIcon::folder) {
        inform("Please select a tool to scrap.");
        return;
    }
    if (view()->idOf(*selectedItem()).kind == ItemId::scrapRecord) {
        inform("The selected tool has already been scrapped.");
        return;
    }
    frmScrap::showModal();
}

void frmTree::cmdNew_MouseDown()
{
    if (const auto refusal = view()->refusal(View::Command::create, {})) {
        msgBox(*refusal);
        return;
    }
    const bool byMouse = QGuiApplication::mouseButtons() & Qt::LeftButton;
    const QPoint place = byMouse ? QCursor::pos() : ui.cmdNew->mapToGlobal(ui.cmdNew->rect().bottomLeft());
    ui.cmdNew->setDown(false); // the menu takes the button's release
    theMainFrame().popUp("mnuTreeNew", place, {TreeMode() == "type" ? "mnuTreeNewLocation" : "mnuTreeNewType"});
}

void frmTree::mdi_TreeNewTool()
{
    const QString mode = view()->mode();
    QString id, name;
    if (actsOnTree()) {
        if (const Node *node = ui.tvMain->selectedNode(); node && node->parent) {
            id = view()->idOf(*node).digits();
            name = KeyedTree::fullPath(node);
        }
    } else {
        // The folder is found by what the item is called: a tool's own folder, a folder's parent.
        const ListItem item = *selectedItem();
        const Recordset rows = item.icon == ItemIcon::folder
            ? openRecordset("Select Parent FROM " + mode + "s where Description = " + quoted(item.text))
            : openRecordset("Select " + mode + " as ID FROM Tools WHERE Description = " + quoted(item.text));
        id = rows.isEmpty() ? QString() : rows.at(0, 0).toText();
        if (!id.isEmpty()) {
            const Recordset folder =
                openRecordset("Select Description from " + mode + "s where ID = " + id + " ORDER BY ID ASC");
            name = folder.isEmpty() ? QString() : folder.text(u"Description");
        }
    }
    if (name.isEmpty()) {
        inform("Please select a tool " + mode + " first.");
        return;
    }
    if (actsOnTree())
        listChosenNode();
    const QStringList before = m_panes.itemKeys();
    const bool byType = mode == "type";
    const qint32 folder = id.toInt();
    frmToolNewEdit::Startup("New", byType, !byType, 0, byType ? folder : 0, byType ? 0 : folder,
                            byType ? name : QString(), byType ? QString() : name);
    m_panes.selectNew(before);
}

void frmTree::mdi_TreeNewType() { newFolder(FolderKind::type); }

void frmTree::mdi_TreeNewLocation() { newFolder(FolderKind::location); }

void frmTree::newFolder(const FolderKind &kind)
{
    const bool inThisTree = view()->mode() == kind.mode && ui.tvMain->selectedNode();
    const Thing parent = m_panes.thingOf(inThisTree ? *ui.tvMain->selectedNode() : *m_panes.nodes().root());
    listChosenNode();
    if (FolderEditor::Startup(kind, "New", 0, parent.text, int(parent.id.number)))
        m_panes.relist();
}

void frmTree::cmdEdit_PopUp()
{
    theMainFrame().popUp("mnuTreeEdit", QCursor::pos(),
                         {TreeMode() == "type" ? "mnuTreeEditLocation" : "mnuTreeEditType"});
}

void frmTree::cmdEdit_Click()
{
    const bool inTree = actsOnTree();
    const View::Things things = inTree ? m_panes.selectedNode() : View::Things{m_panes.thingOf(*selectedItem())};
    if (things.empty())
        inform("Please select an item first.");
    else if (const auto refusal = view()->refusal(View::Command::edit, things))
        msgBox(*refusal);
    else if (things.front().id.isTool())
        TreeEditTool();
    else
        editFolder(things.front());
}

void frmTree::editFolder(const Thing &folder)
{
    const bool types = TreeMode() == "type";
    FolderEditor::Startup(types ? FolderKind::type : FolderKind::location, "Edit", int(folder.id.number), folder.text,
                          0);
}

void frmTree::TreeEditTool()
{
    const ListItem *item = selectedItem();
    if (!item || item->icon == ItemIcon::folder) {
        inform("Please select an item first.");
        return;
    }
    const Thing tool = m_panes.thingOf(*item);
    if (tool.id.kind != ItemId::toolInStock) {
        inform(tool.id.kind == ItemId::scrapRecord ? "A scrapped tool cannot be edited!"
                                                   : "A checked out tool cannot be edited!");
        return;
    }
    narrowSelection();
    frmToolNewEdit::Startup("Edit", TreeMode() == "type", TreeMode() == "location", int(tool.id.number), 0, 0, {}, {});
}

void frmTree::cmdDelete_Click()
{
    if (!TreeHasFocus && !selectedItem()) {
        inform("Please select a tool to delete.");
        return;
    }
    TreeDeleteItems();
}

void frmTree::TreeDeleteItems()
{
    const bool fromTree = TreeHasFocus && ui.tvMain->selectedNode();
    const View::Things things = fromTree ? m_panes.selectedNode() : m_panes.selectedItems();
    if (things.empty())
        msgBox({.text = "Nothing to delete. Please select the item(s) to delete first."});
    else if (const auto refusal = view()->refusal(View::Command::remove, things))
        msgBox(*refusal);
    else
        carryOut([&] { return view()->remove(things, fromTree); }, [&] { m_panes.removed(things); });
}

void frmTree::move(const View::Things &things, const Node *target, bool fromTree)
{
    const Thing to = m_panes.thingOf(*target);
    carryOut([&] { return view()->move(things, to, fromTree); }, [&] { m_panes.moved(things, to.id.nodeKey()); });
}

// What dropping does, without a mouse.
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

void frmTree::cmdQuery_Click() { QueryForm::showModal(view()->row.query); }

void frmTree::cmdFind_Click()
{
    frmFind &find = frmFind::instance();
    find.Startup();
    find.show();
    find.raise();
    find.activateWindow();
}

void frmTree::printList()
{
    if (const Node *node = m_panes.listed())
        printReport(theMainFrame().CrpMain(),
                    {.windowTitle = ui.lblList->text(),
                     .templateFile = view()->row.printTemplate,
                     .selectionFormula = view()->selectionFormula(*node)});
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
