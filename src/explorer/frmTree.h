#pragma once

#include "common/ExplorerView.h"
#include "explorer/TreeView.h"
#include "platform/engine/Recordset.h"
#include "platform/gui/SharedForm.h"
#include "ui_frmTree.h"

#include <array>
#include <functional>

/// What a job or an operation that tools were scrapped for is called: the operation's description, the job's number.
QString chargeText(const Recordset &pair);
/// The tools that are out with who has them, up to the condition that narrows them down.
extern const QString toolsOutOfEmployees;
/// A tool that is out, and a scrap record, as the list shows them; the rows are those of the list's statements.
ListItem checkedOutItem(const Recordset &row);
ListItem scrapItem(const Recordset &row);

/// The tool explorer: a tree of folders in one of four views, the list of what the selected folder holds, and the
/// commands on both.
class frmTree : public QWidget, public ExplorerView, public SharedForm<frmTree>
{
    Q_OBJECT
public:
    ~frmTree() override;

    /// Opens the explorer in the type view; a second call does nothing. With `showProgress` the splash shows how far
    /// it has come.
    void Startup(bool showProgress);

    void ViewByType();
    void ViewByLocation();
    void ViewByCheckedOut();
    void ViewByScrap();

    // What menus and buttons ask for
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdScrapTool_Click();
    void cmdRefresh_Click();
    void TreeEditTool();
    void TreeDeleteItems();

    /// Goes to the node that the texts of `path` lead to, separated by "\", from the root on, and lists its contents.
    /// @returns false, and stays, when there is no such node.
    bool showPath(const QString &path);
    /// Selects the item with that key in the list. @returns false when it is not there.
    bool selectItem(const QString &key);

    QString TreeMode() const override { return m_mode; }
    const ListItem *selectedItem() const override;
    void patchSelectedItem(const ListItem &item) override;
    void removeSelectedItem() override;
    int itemCount() const override;
    void selectFirstItem() override;
    void focusList() override;
    void listSelectedNode() override;
    void rebuildView() override;
    void addChildNode(const QString &mode, int parentId, int id, const QString &text) override;
    void renameNode(const QString &mode, int id, const QString &text) override;
    std::optional<PickedFolder> pickFolder(const QString &mode, QWidget *parent) override;

    Ui::frmTree ui;

signals:
    /// The explorer closes; what shows its contents closes with it.
    void FormUnload();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool event(QEvent *event) override;

private:
    using Node = KeyedTree::Node;
    friend class SharedForm<frmTree>;
    frmTree();

    std::array<QRadioButton *, 4> options() const;
    void optMode_Click(int index);
    void cmdNew_MouseDown();
    void cmdEdit_PopUp();
    void cmdQuery_Click();
    void cmdFind_Click();
    void mdi_TreeNewTool();
    void mdi_TreeNewType();
    void mdi_TreeNewLocation();
    void newFolder(const struct FolderKind &kind);
    void editFolder(int id, const QString &text);
    void deleteNode(Node *node);
    void deleteItems(const std::vector<int> &rows);
    void deleteScrapItems(const std::vector<int> &rows);
    QString folderQuestion() const;
    bool mayDeleteFolder(const QString &id) const;
    void removeDeletedFolders(const QStringList &ids);
    QList<qint32> scrapIdsOf(const QString &jobOrOH, const QString &lineItemTypeId) const;
    void purge(const QList<qint32> &scrapIds, const QString &question);
    bool actsOnTree() const;

    // Trees
    void initTreetype(Node *parent, qint16 id);
    void initTreeLocation(Node *parent, qint16 id);
    void initFolderTree(const struct FolderTree &tree, Node *parent, qint16 id);
    void addFolderNode(const struct FolderStatements &statements, Node *parent, qint16 id);
    void initTreeScrap();
    void initTreeCheckedOut();
    void addChargeNode(Node *kind, const Recordset &pair);
    void startTree(const QString &mode, const QString &title);
    void showMode(const QString &mode);
    void showView(const std::function<void()> &build);
    void tvMain_Expand(Node *node);

    // Lists
    void tvMain_NodeClick(Node *node);
    void ListByType(Node *node);
    void ListByLoc(Node *node);
    void ListByFolder(Node *node, const struct FolderLists &lists);
    void ListByCheckedOut(Node *node);
    void ListByScrap(Node *node);
    void startList(Node *node);
    void showListHeading(const Node *node);
    void addRows(const QString &statement, const std::function<ListItem(const Recordset &)> &itemOf);

    // What the user does in tree and list
    void tvMain_PopUp(Node *node, const QPoint &globalPosition);
    void lstToolList_PopUp(const QPoint &globalPosition);
    void lstToolList_DblClick();
    void lstToolList_DragDrop();
    void tvMain_DragDrop(Node *dragged);
    Node *nodeOfFolder(const ListItem &folder);
    Node *nodeOfFolder(int id);
    void moveToPicked();
    void showMoved(Node *target);
    void goToNode(const QString &key);
    QAbstractButton *commandOf(const QKeyEvent &key) const;

    KeyedTree &nodes() { return ui.tvMain->nodes(); }
    KeyedList &items() { return ui.lstToolList->items(); }
    const KeyedList &items() const { return ui.lstToolList->items(); }

    QString m_mode;
    bool m_started = false;
    QString m_listedKey; // of the node whose contents the list shows
};
