#pragma once

#include "explorer/Pane.h"
#include "platform/gui/KeyedTree.h"

/// The explorer's tree on the screen: node clicks by mouse and keyboard, pop-ups, and drags of its own nodes or of
/// the tool list's items onto its nodes.
class TreePane : public Pane
{
    Q_OBJECT
public:
    using Node = KeyedTree::Node;

    explicit TreePane(QWidget *parent = nullptr);

    KeyedTree &nodes() { return m_nodes; }
    Node *selectedNode() const;
    /// Opens what the node lies in, which may read its place anew; selectedNode() is what stands there then, null
    /// when nothing does.
    void selectNode(const Node *node);
    void expandNode(const Node *node) { expand(m_nodes.indexOf(node)); }

    /// The node that a drag is over; it is marked.
    Node *dropHighlight() const { return m_dropHighlight; }
    void setDropHighlight(Node *node);
    /// The node that is being dragged; null when none is.
    Node *draggedNode() const { return m_draggedNode; }

signals:
    /// The user went to the node, by a click or a key.
    void nodeClicked(KeyedTree::Node *node);
    void popUpWanted(KeyedTree::Node *node, const QPoint &globalPosition);
    /// Items of the tool list were dropped on the marked node.
    void itemsDropped();
    void nodeDropped(KeyedTree::Node *dragged);
    /// A press or a drag that may have marked another node is over and was no click.
    void gestureEnded();

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;
    /// Below a root without other nodes.
    QRect emptyRoom() const override;
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
    Node *m_dropHighlight = nullptr;
    Node *m_draggedNode = nullptr;
};
