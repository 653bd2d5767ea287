#pragma once

#include "common/ExplorerWindow.h"
#include "explorer/Panes.h"
#include "platform/gui/SharedForm.h"
#include "ui_frmTree.h"

/// The tool explorer: a tree of folders in one of four views, the list of what the selected folder holds, and the
/// commands on both. What the views show and allow stands in the views, where the user is in the panes.
class frmTree : public QWidget, public ExplorerWindow, public SharedForm<frmTree>
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

    /// Goes to a hit of a search: lists the node that holds it and selects it there.
    /// @returns false, and stays, when there is no such node.
    bool goToHit(const ListItem &hit);
    /// Selects the item with that key in the list. @returns false when it is not there.
    bool selectItem(const QString &key) { return m_panes.selectItem(key); }
    /// Null before the first tree is begun.
    const View *view() const { return m_panes.view(); }

    QString TreeMode() const override { return view() ? view()->mode() : QString(); }
    const ListItem *selectedItem() const override;
    void patchSelectedItem(const ListItem &item) override;
    void removeSelectedItem() override;
    void narrowSelection() override;
    int itemCount() const override;
    void selectFirstItem() override;
    void focusList() override;
    void listSelectedNode() override { m_panes.relist(); }
    void rebuildView() override { m_panes.rebuild(); }
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
    QAbstractButton *commandOf(const QKeyEvent &key) const;
    void bindKeys();
    void onKey(Qt::Key key, void (frmTree::*command)());
    void moveSplit(int by);
    void toggleMaximized();
    void showSelectedCount();

    // Commands
    void cmdNew_MouseDown();
    void cmdEdit_PopUp();
    void cmdQuery_Click();
    void cmdFind_Click();
    void printList();
    void mdi_TreeNewTool();
    void mdi_TreeNewType();
    void mdi_TreeNewLocation();
    void newFolder(const struct FolderKind &kind);
    void editFolder(const Thing &folder);
    bool actsOnTree() const;
    void listChosenNode();
    void carryOut(const std::function<View::Outcome()> &command, const std::function<void()> &show);

    // What the user does in tree and list
    void tvMain_NodeClick(Node *node);
    void tvMain_PopUp(Node *node, const QPoint &globalPosition);
    void tvMain_DragDrop(Node *dragged);
    void lstToolList_PopUp(const QPoint &globalPosition);
    void lstToolList_DblClick();
    void lstToolList_DragDrop();
    void move(const View::Things &things, const Node *target, bool fromTree);
    void moveToPicked();

    Panes m_panes;
    class StatusLine *m_statusLine = nullptr;
    bool m_started = false;
};
