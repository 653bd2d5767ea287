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
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
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
    painter.drawText(contentsRect(), int(alignment()), shownText());
}
