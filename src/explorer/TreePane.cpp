#include "explorer/TreePane.h"

#include "explorer/ListPane.h"

#include <QContextMenuEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

namespace {
const QString nodeFormat = QStringLiteral("application/x-vorlane-node");
constexpr int hoverBeforeExpanding = 800; // milliseconds of a drag over a closed node
}

TreePane::TreePane(QWidget *parent) : Pane(parent)
{
    setModel(&m_nodes);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setAnimated(false); // children may be read anew while their node opens
    setEditTriggers(NoEditTriggers);
    setAutoExpandDelay(hoverBeforeExpanding);
    setDropIndicatorShown(false);
    // Marks on nodes go with them.
    const auto forgetMarks = [this] { m_dropHighlight = m_draggedNode = nullptr; };
    connect(&m_nodes, &QAbstractItemModel::modelAboutToBeReset, this, forgetMarks);
    connect(&m_nodes, &QAbstractItemModel::rowsAboutToBeRemoved, this, forgetMarks);
}

TreePane::Node *TreePane::selectedNode() const { return m_nodes.nodeAt(currentIndex()); }

// By keys: where opening the node above reads its children anew, the node is another one afterwards.
void TreePane::selectNode(const Node *node)
{
    const QString key = node->key;
    QStringList above;
    for (node = node->parent; node; node = node->parent)
        above.prepend(node->key);
    for (const QString &folder : std::as_const(above))
        expandNode(m_nodes.find(folder));
    setCurrentIndex(m_nodes.indexOf(m_nodes.find(key)));
}

void TreePane::setDropHighlight(Node *node)
{
    if (m_dropHighlight == node)
        return;
    m_dropHighlight = node;
    viewport()->update();
}

QRect TreePane::emptyRoom() const
{
    const QModelIndex root = m_nodes.index(0, 0);
    if (!root.isValid() || m_nodes.rowCount(root) > 0)
        return {};
    return viewport()->rect().adjusted(0, visualRect(root).bottom(), 0, 0);
}

void TreePane::mousePressEvent(QMouseEvent *event)
{
    // The right button selects the node for its pop-up, no more.
    if (event->button() == Qt::RightButton) {
        if (Node *node = nodeUnder(event->position().toPoint()))
            selectNode(node);
        return;
    }
    Pane::mousePressEvent(event);
}

void TreePane::mouseReleaseEvent(QMouseEvent *event)
{
    Node *node = nodeUnder(event->position().toPoint());
    if (event->button() == Qt::RightButton) {
        if (node) {
            selectNode(node);
            emit popUpWanted(selectedNode(), event->globalPosition().toPoint());
        } else {
            emit gestureEnded();
        }
        return;
    }
    Pane::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && node && node == selectedNode())
        emit nodeClicked(node);
    else
        emit gestureEnded();
}

// One node is always marked: neither a click beside the nodes nor one with Ctrl takes the mark away.
QItemSelectionModel::SelectionFlags TreePane::selectionCommand(const QModelIndex &index, const QEvent *) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

void TreePane::keyPressEvent(QKeyEvent *event)
{
    const Node *before = selectedNode();
    Pane::keyPressEvent(event);
    if (Node *node = selectedNode(); node && node != before)
        emit nodeClicked(node);
}

void TreePane::contextMenuEvent(QContextMenuEvent *event)
{
    Node *node = selectedNode();
    if (event->reason() == QContextMenuEvent::Keyboard && node)
        emit popUpWanted(node, viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void TreePane::startDrag(Qt::DropActions)
{
    Node *node = selectedNode();
    if (!node || !node->parent) // the root stays where it is
        return;
    m_draggedNode = node;
    drag(nodeFormat);
    m_draggedNode = nullptr;
    setDropHighlight(nullptr);
    emit gestureEnded();
}

void TreePane::dragEnterEvent(QDragEnterEvent *event)
{
    const QMimeData *data = event->mimeData();
    event->setAccepted(data->hasFormat(nodeFormat) || data->hasFormat(ListPane::dragFormat));
}

void TreePane::dragMoveEvent(QDragMoveEvent *event)
{
    Pane::dragMoveEvent(event); // scrolls at the edges and opens closed nodes
    Node *node = nodeUnder(event->position().toPoint());
    setDropHighlight(node);
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(node);
}

void TreePane::dragLeaveEvent(QDragLeaveEvent *event)
{
    setDropHighlight(nullptr);
    Pane::dragLeaveEvent(event);
}

void TreePane::dropEvent(QDropEvent *event)
{
    stopAutoScroll();
    setState(NoState);
    setDropHighlight(nodeUnder(event->position().toPoint()));
    event->setDropAction(Qt::MoveAction);
    event->accept();
    if (m_draggedNode)
        emit nodeDropped(m_draggedNode);
    else
        emit itemsDropped();
    setDropHighlight(nullptr);
}

void TreePane::drawRow(QPainter *painter, const QStyleOptionViewItem &options, const QModelIndex &index) const
{
    Pane::drawRow(painter, options, index);
    if (!m_dropHighlight || m_nodes.nodeAt(index) != m_dropHighlight)
        return;
    // A frame, so that the mark differs from a selection by more than its colour.
    const QColor colour = palette().color(QPalette::Highlight);
    QColor filling = colour;
    filling.setAlpha(60);
    painter->setPen(QPen(colour, 2));
    painter->setBrush(filling);
    painter->drawRect(visualRect(index).adjusted(1, 1, -1, -1));
}
