#include "explorer/PaneLook.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QPainter>

void PaneLook::setInCharge(QAbstractItemView &view, bool inCharge)
{
    // At least 3 to 1 against light and dark backgrounds, and more than 6 to 1 under black text.
    constexpr QColor grey(0x8c, 0x8c, 0x8c);
    if (view.testAttribute(Qt::WA_SetPalette) != inCharge)
        return;
    QPalette palette;
    if (!inCharge) {
        palette.setResolveMask(0);
        palette.setColor(QPalette::Highlight, grey);
        palette.setColor(QPalette::HighlightedText, Qt::black);
    }
    view.setPalette(inCharge ? QPalette() : palette);
}

bool PaneLook::isUsersChoice(const QFocusEvent &focus)
{
    const Qt::FocusReason reason = focus.reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

void PaneLook::paintHint(QAbstractItemView &view, const QRect &place, const QString &hint)
{
    constexpr int margin = 12; // pixels
    QPainter painter(view.viewport());
    painter.setPen(view.palette().color(QPalette::Text));
    painter.drawText(place.adjusted(margin, margin, -margin, -margin), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                     hint);
}
