#pragma once

#include "explorer/RefreshMark.h"
#include "explorer/View.h"
#include "ui_frmTree.h"

#include <optional>

/// The explorer's two panes: the view that they show, the node whose contents are listed, and what is selected. The
/// marked node, the heading, the list and what commands act on are kept one.
class Panes
{
public:
    using Node = KeyedTree::Node;

    /// `treeHasFocus`: commands act on the tree's node, not on the list's items.
    Panes(Ui::frmTree &ui, bool &treeHasFocus);

    /// Null before the first tree is begun.
    const View *view() const { return m_view; }
    KeyedTree &nodes() const { return m_ui.tvMain->nodes(); }
    KeyedList &items() const { return m_ui.lstToolList->items(); }
    ThrottledProgress &progress() const { return *m_ui.pB; }

    // What views do

    /// Empties both panes for the view, which is the current one from now on. @returns the tree's root.
    Node *begin(const View &view);
    /// Nothing of the tree is seen for the life of the object.
    class Hidden
    {
    public:
        explicit Hidden(Panes &panes);
        ~Hidden();
        Q_DISABLE_COPY_MOVE(Hidden)

    private:
        TreePane &m_tree;
        KeyedTree::Filling m_filling;
    };
    void addRows(const QString &statement, const std::function<ListItem(const class Recordset &)> &itemOf);

    // What the window does

    /// Remarks wait until the window is started.
    bool isStarted = false;

    /// Builds the view's tree and lists its root. @throws EngineError or KeyError; a view that could not even be begun
    /// leaves the one before.
    void show(const View &view);
    /// Builds the current view anew. The user's place comes back: the node, or what is left of the way to it, and the
    /// selected items.
    void rebuild();
    /// Lists the node's contents. Commands act on the tree from now on.
    void list(const Node *node);
    /// Reads the listed node's contents anew; what was selected stays so.
    void relist();
    /// The node whose contents the list shows; null when it has gone.
    Node *listed() const { return nodes().find(m_listedKey); }
    /// Commands act on the tree's node or on the list's items; the other pane turns grey.
    void setInCharge(bool tree);
    /// What to do first, as long as the view has nothing to show.
    void showHint();
    /// Marks the listed node in the tree, after a press, a drag or a pop-up that led nowhere.
    void followListed();
    void openNode(Node *node);

    /// Selects the node and lists its contents. Nothing happens when it is gone.
    void goTo(const QString &nodeKey);
    /// Goes to the node that the texts of `path` lead to, separated by "\", from the root on.
    /// @returns false, and stays, when there is no such node.
    bool showPath(const QString &path);
    bool selectItem(const QString &key);

    Thing thingOf(const Node &node) const;
    Thing thingOf(const ListItem &item) const;
    /// The tree's node, which is at most one, and the list's selected items from top to bottom.
    View::Things selectedNode() const;
    View::Things selectedItems() const;
    /// Those items of the list that are not among `before`, selected.
    void selectNew(const QStringList &before);
    QStringList itemKeys() const;

    /// Shows that the things are gone: the folders among them from the tree, and the next item is selected.
    void removed(const View::Things &things);
    /// Shows that the things lie in `target`.
    void moved(const View::Things &things, const QString &target);
    void renamed(Node *node, const QString &text);

private:
    /// Where the user is: the things from the listed node up, and what is selected below.
    struct Place {
        View::Things path;
        View::Things selected;
        QString nextKey; ///< of the item that follows the selected ones
        bool treeHasFocus;
    };
    Place place() const;
    QStringList expandedNodes() const;
    void comeBack(const Place &place);
    void listRoot();
    void showHeading(const Node *node);
    void tell(const QString &remark);

    Ui::frmTree &m_ui;
    bool &m_treeHasFocus;
    const View *m_view = nullptr;
    bool m_begun = false;
    QString m_listedKey;
    QString m_told;
    std::optional<RefreshMark> m_refreshMark;
};
