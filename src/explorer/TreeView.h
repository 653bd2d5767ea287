#pragma once

#include "platform/gui/KeyedTree.h"

#include <QTreeView>

/// The explorer's tree on the screen: node clicks by mouse and keyboard, pop-ups, and drags of its own nodes or of
/// the tool list's items onto its nodes.
class TreeView : public QTreeView
{
    Q_OBJECT
public:
    using Node = KeyedTree::Node;

    explicit TreeView(QWidget *parent = nullptr);

    KeyedTree &nodes() { return m_nodes; }
    Node *selectedNode() const;
    /// Opens what the node lies in, which may read its place anew; selectedNode() is what stands there then, null
    /// when nothing does.
    void selectNode(const Node *node);
    void expandNode(const Node *node) { expand(m_nodes.indexOf(node)); }

    /// What stands below the root while it has no other nodes.
    void setHint(const QString &hint);

    /// The node that a drag is over; it is marked.
    Node *dropHighlight() const { return m_dropHighlight; }
    void setDropHighlight(Node *node);
    /// The node that is being dragged; null when none is.
    Node *draggedNode() const { return m_draggedNode; }
    /// Nodes may be dragged, and things be dropped on them, in the two views that show stored trees.
    void setMovesAllowed(bool allowed);

signals:
    /// The user went to the node, by a click or a key.
    void nodeClicked(KeyedTree::Node *node);
    void popUpWanted(KeyedTree::Node *node, const QPoint &globalPosition);
    /// Items of the tool list were dropped on the marked node.
    void itemsDropped();
    void nodeDropped(KeyedTree::Node *dragged);
    /// The user went to the tree by keyboard or mouse.
    void focused();
    /// A press or a drag that may have marked another node is over and was no click.
    void gestureEnded();

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &options, const QModelIndex &index) const override;

private:
    Node *nodeUnder(const QPoint &position) const { return m_nodes.nodeAt(indexAt(position)); }

    KeyedTree m_nodes;
    QString m_hint;
    Node *m_dropHighlight = nullptr;
    Node *m_draggedNode = nullptr;
};
