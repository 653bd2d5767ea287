#include "explorer/Pane.h"

#include "platform/gui/Icons.h"

#include <QDrag>
#include <QFocusEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

void Pane::setInCharge(bool inCharge)
{
    // At least 3 to 1 against light and dark backgrounds, and more than 6 to 1 under black text.
    constexpr QColor grey(0x8c, 0x8c, 0x8c);
    if (testAttribute(Qt::WA_SetPalette) != inCharge)
        return;
    QPalette palette;
    if (!inCharge) {
        palette.setResolveMask(0);
        palette.setColor(QPalette::Highlight, grey);
        palette.setColor(QPalette::HighlightedText, Qt::black);
    }
    setPalette(inCharge ? QPalette() : palette);
}

void Pane::setHint(const QString &hint)
{
    if (hint != std::exchange(m_hint, hint))
        viewport()->update();
}

void Pane::setMovesAllowed(bool allowed)
{
    setDragEnabled(allowed);
    setAcceptDrops(allowed);
}

// A focus that comes back from a menu, a dialog or another window was not the user's choice.
void Pane::focusInEvent(QFocusEvent *event)
{
    QTreeView::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason)
        emit touched();
}

// Only the left button drags.
void Pane::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton || event->buttons() & Qt::LeftButton)
        QTreeView::mouseMoveEvent(event);
}

void Pane::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    const QRect room = emptyRoom();
    if (room.isNull() || m_hint.isEmpty())
        return;
    constexpr int margin = 12; // pixels
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(room.adjusted(margin, margin, -margin, -margin), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                     m_hint);
}

void Pane::drag(const QString &format)
{
    constexpr int side = 32; // pixels of the pointer's picture
    auto *drag = new QDrag(this);
    auto *data = new QMimeData;
    data->setData(format, {});
    drag->setMimeData(data);
    drag->setDragCursor(Icons::icon("drag-drop").pixmap(side), Qt::MoveAction);
    drag->setDragCursor(Icons::icon("off-limit").pixmap(side), Qt::IgnoreAction);
    drag->exec(Qt::MoveAction);
}
