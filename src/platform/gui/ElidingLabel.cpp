#include "platform/gui/ElidingLabel.h"

#include <QPainter>

ElidingLabel::ElidingLabel(QWidget *parent) : QLabel(parent)
{
    // What users typed is shown as it stands.
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize ElidingLabel::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void ElidingLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    painter.drawText(contentsRect(), int(alignment()), shown);
}
