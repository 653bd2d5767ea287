#include "platform/gui/ElidingLabel.h"

#include <QEvent>
#include <QPainter>

ElidingLabel::ElidingLabel(QWidget *parent) : QLabel(parent)
{
    // What users typed is shown as it stands.
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidingLabel::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

QString ElidingLabel::shownText() const
{
    const QRect room = contentsRect();
    if (!wordWrap())
        return fontMetrics().elidedText(text(), m_mode, room.width());
    QString shown = text();
    for (qsizetype side = shown.size() / 2;
         side > 0 && fontMetrics().boundingRect(room, Qt::TextWordWrap, shown).height() > room.height(); --side)
        shown = text().left(side).trimmed() + QChar(0x2026) + text().right(side).trimmed();
    return shown;
}

bool ElidingLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        setToolTip(shownText() == text() ? QString() : "<p>" + text().toHtmlEscaped() + "</p>");
    return QLabel::event(event);
}

void ElidingLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawText(contentsRect(), int(alignment()) | (wordWrap() ? Qt::TextWordWrap : 0), shownText());
}
