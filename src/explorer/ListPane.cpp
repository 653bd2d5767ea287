#include "explorer/ListPane.h"

#include "explorer/ListItems.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>

const QString ListPane::dragFormat = QStringLiteral("application/x-vorlane-items");

ListPane::ListPane(QWidget *parent) : Pane(parent), m_items(&ListItems::picture), m_widths(*this, m_items)
{
    setModel(&m_items);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    header()->setSectionsClickable(true);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(header(), &QHeaderView::sectionClicked, this, &ListPane::headingClicked);
    connect(this, &QAbstractItemView::doubleClicked, this, &ListPane::itemOpened);
}

void ListPane::setColumns(const std::vector<ListColumn> &columns)
{
    m_items.setColumns(columns);
    m_widths.reset();
    showSortMark();
}

int ListPane::selectedRow() const
{
    if (selectionModel()->isSelected(currentIndex()))
        return currentIndex().row();
    const std::vector<int> rows = selectedRows();
    return rows.empty() ? -1 : rows.front();
}

std::vector<int> ListPane::selectedRows() const
{
    std::vector<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

// Whatever keys are held down: the view itself would add the row with Ctrl, or take it away.
void ListPane::selectRow(int row)
{
    selectionModel()->setCurrentIndex(m_items.index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool ListPane::selectRowsIf(const std::function<bool(int)> &suits)
{
    // Neighbours are one range: thousands of them would take seconds.
    QItemSelection selection;
    for (int row = 0, first = -1; row <= m_items.count(); ++row) {
        const bool chosen = row < m_items.count() && suits(row);
        if (chosen && first < 0)
            first = row;
        if (chosen || first < 0)
            continue;
        selection.select(m_items.index(first, 0), m_items.index(row - 1, m_items.columnCount() - 1));
        first = -1;
    }
    if (selection.isEmpty())
        return false;
    const QModelIndex top = selection.front().topLeft();
    selectionModel()->setCurrentIndex(top, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    scrollTo(top);
    return true;
}

void ListPane::setMovesAllowed(bool allowed)
{
    Pane::setMovesAllowed(allowed);
    DragArmed = false;
    DragItem = -1;
}

void ListPane::mousePressEvent(QMouseEvent *event)
{
    if (movesAllowed() && event->button() == Qt::LeftButton) {
        DragItem = indexAt(event->position().toPoint()).row();
        emit itemPressed();
    }
    Pane::mousePressEvent(event);
    emit touched();
}

void ListPane::mouseMoveEvent(QMouseEvent *event)
{
    if (movesAllowed() && event->buttons() & Qt::LeftButton) {
        DragArmed = true;
        // A hand that trembles on a row moves nothing: a drag begins when the pointer crosses onto another row.
        const int row = indexAt(event->position().toPoint()).row();
        if (DragItem < 0 || row < 0 || row == DragItem)
            return;
    }
    Pane::mouseMoveEvent(event);
}

void ListPane::mouseReleaseEvent(QMouseEvent *event)
{
    Pane::mouseReleaseEvent(event);
    emit touched();
    if (event->button() == Qt::RightButton && selectedRow() >= 0)
        emit popUpWanted(event->globalPosition().toPoint());
}

void ListPane::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && selectedRow() >= 0) {
        emit itemOpened();
        return;
    }
    if (const int column = event->key() - Qt::Key_1;
        event->modifiers() == Qt::ControlModifier && column >= 0 && column < m_items.columnCount()) {
        headingClicked(column);
        return;
    }
    // The first such key in a list without a selection takes the item that stands under the focus already.
    const QList<int> moves{Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
    if (moves.contains(event->key()) && selectedRow() < 0 && m_items.count() > 0) {
        const int last = m_items.count() - 1;
        selectRow(event->key() == Qt::Key_Home      ? 0
                      : event->key() == Qt::Key_End ? last
                                                    : qMax(0, currentIndex().row()));
        emit touched();
        return;
    }
    const QModelIndex before = currentIndex();
    const QItemSelection selectedBefore = selectionModel()->selection();
    Pane::keyPressEvent(event);
    if (before != currentIndex() || selectedBefore != selectionModel()->selection())
        emit touched();
}

void ListPane::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() != QContextMenuEvent::Keyboard || selectedRow() < 0)
        return;
    emit touched();
    emit popUpWanted(viewport()->mapToGlobal(visualRect(m_items.index(selectedRow(), 0)).bottomLeft()));
}

void ListPane::startDrag(Qt::DropActions)
{
    drag(dragFormat);
    DragArmed = false;
}

void ListPane::dragEnterEvent(QDragEnterEvent *event) { event->setAccepted(event->mimeData()->hasFormat(dragFormat)); }

void ListPane::dragMoveEvent(QDragMoveEvent *event)
{
    // Over the list itself the drag only shows that it may go on; nothing is dropped here.
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void ListPane::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
}

void ListPane::headingClicked(int column)
{
    m_items.clickHeading(column);
    showSortMark();
}

void ListPane::showSortMark()
{
    header()->setSortIndicatorShown(m_items.isSorted());
    if (m_items.isSorted())
        header()->setSortIndicator(m_items.sortColumn(), m_items.sortOrder());
}
