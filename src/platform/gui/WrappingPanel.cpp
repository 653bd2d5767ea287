#include "platform/gui/WrappingPanel.h"

#include <QEvent>
#include <QGridLayout>

#include <numeric>

QGridLayout *WrappingPanel::grid() const { return static_cast<QGridLayout *>(layout()); }

QList<QWidget *> WrappingPanel::controls() const
{
    return findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

int WrappingPanel::widthOf(int columns) const
{
    const QList<QWidget *> all = controls();
    std::vector<int> widths(size_t(columns), 0);
    for (int i = 0; i < all.size(); ++i) {
        int &width = widths[size_t(i % columns)];
        width = qMax(width, all[i]->sizeHint().width());
    }
    return std::accumulate(widths.begin(), widths.end(), (columns - 1) * grid()->horizontalSpacing());
}

QSize WrappingPanel::minimumSizeHint() const
{
    constexpr int atLeast = 2; // columns
    return {qMin(widthOf(atLeast), QWidget::minimumSizeHint().width()), QWidget::minimumSizeHint().height()};
}

bool WrappingPanel::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        wrap();
    return isHandled;
}

void WrappingPanel::wrap()
{
    if (m_most == 0)
        m_most = grid()->columnCount();
    int columns = m_most;
    while (columns > 1 && widthOf(columns) > width())
        --columns;
    const QList<QWidget *> all = controls();
    if (grid()->itemAtPosition(0, columns - 1) && !grid()->itemAtPosition(0, columns))
        return;
    for (int i = 0; i < all.size(); ++i)
        grid()->addWidget(all[i], i / columns, i % columns);
}
