#pragma once

#include "explorer/Pane.h"
#include "platform/gui/ColumnWidths.h"

/// The explorer's tool list on the screen, in report style.
class ListPane : public Pane
{
    Q_OBJECT
public:
    /// What marks a drag as one of this list's items.
    static const QString dragFormat;

    explicit ListPane(QWidget *parent = nullptr);

    KeyedList &items() { return m_items; }
    const KeyedList &items() const { return m_items; }
    void setColumns(const std::vector<ListColumn> &columns);

    /// Row of the item that commands act on: the current one, if it is selected, else the first selected; -1.
    int selectedRow() const;
    /// All selected rows from top to bottom.
    std::vector<int> selectedRows() const;
    void selectRow(int row);
    /// Selects all rows that suit. @returns whether there are any; else the selection stays.
    bool selectRowsIf(const std::function<bool(int row)> &suits);

    void setMovesAllowed(bool allowed) override;
    /// A drag of items may start or is under way.
    bool DragArmed = false;
    /// Row of the item that was under the pointer when the left button went down; -1 when none was.
    int DragItem = -1;

signals:
    void itemPressed();
    void popUpWanted(const QPoint &globalPosition);
    /// An item was double-clicked, or Enter pressed on it.
    void itemOpened();

protected:
    QRect emptyRoom() const override { return m_items.rowCount() == 0 ? viewport()->rect() : QRect(); }
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void headingClicked(int column);
    void showSortMark();

    KeyedList m_items;
    ColumnWidths m_widths;
};
