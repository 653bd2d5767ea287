#include "platform/reportengine/PagePainter.h"

#include "platform/reportengine/Code128.h"
#include "platform/reportengine/TextMeasure.h"

#include <QPainter>

namespace {

constexpr double ruleWidth = 0.5 * TextMeasure::twipsPerPoint;

void paintText(QPainter &painter, const PageElement &element, TextMeasure &measure)
{
    const double spare = element.rect.width() - measure.width(element.text, element.size, element.bold);
    double left = element.rect.left();
    if (element.alignment & Qt::AlignRight)
        left += spare;
    else if (element.alignment & Qt::AlignHCenter)
        left += spare / 2;
    painter.setFont(measure.font(element.size, element.bold));
    painter.setPen(element.color);
    painter.drawText(QPointF(left, element.rect.top() + measure.baseline(element.size, element.bold)), element.text);
}

void paintBarCode(QPainter &painter, const PageElement &element)
{
    for (const QRectF &bar : Code128::bars(element.text, element.rect, element.alignment))
        painter.fillRect(bar, element.color);
}

}

void paintElements(QPainter &painter, const QList<PageElement> &elements, TextMeasure &measure)
{
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const PageElement &element : elements) {
        switch (element.kind) {
        case PageElement::Text:
            paintText(painter, element, measure);
            break;
        case PageElement::BarCode:
            paintBarCode(painter, element);
            break;
        case PageElement::Rule:
            painter.setPen(QPen(element.color, ruleWidth));
            painter.drawLine(element.rect.topLeft(), element.rect.topRight());
            break;
        case PageElement::Shade:
        case PageElement::Bar:
            painter.fillRect(element.rect, element.color);
            break;
        }
    }
}
