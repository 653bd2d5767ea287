#include "platform/gui/ColumnWidths.h"

#include "platform/gui/Twips.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QToolTip>
#include <QTreeView>

#include <numeric>

namespace {
constexpr int step = 16; // pixels
}

ColumnWidths::ColumnWidths(QTreeView &view, const KeyedList &list) : QObject(&view), m_view(view), m_list(list)
{
    view.viewport()->installEventFilter(this);
    view.installEventFilter(this);
    connect(&list, &QAbstractItemModel::modelReset, this, &ColumnWidths::fit);
    connect(view.header(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (m_fitting || column >= int(m_own.size()))
            return;
        m_own[size_t(column)] = width;
        m_byUser[size_t(column)] = true;
    });
}

void ColumnWidths::reset()
{
    m_own.clear();
    for (int column = 0; column < m_list.columnCount(); ++column) {
        const int width = Twips::toPixels(m_list.columns()[size_t(column)].width);
        m_own.push_back(qMax(width, m_view.header()->sectionSizeHint(column))); // a large font needs more
    }
    m_byUser.assign(m_own.size(), false);
    fit();
}

void ColumnWidths::fit()
{
    if (m_own.empty() || int(m_own.size()) != m_view.header()->count())
        return;
    std::vector<int> widths = m_own;
    int spare = m_view.viewport()->width() - std::accumulate(widths.begin(), widths.end(), 0);
    if (spare > 0 && !m_byUser[0]) {
        const int more = qBound(0, longestText() - widths[0], spare);
        widths[0] += more;
        spare -= more;
    }
    int free = 0;
    for (size_t column = 0; column < widths.size(); ++column)
        free += m_byUser[column] ? 0 : widths[column];
    for (size_t column = 0; spare > 0 && column < widths.size(); ++column)
        if (!m_byUser[column])
            widths[column] += spare * widths[column] / free;
    const QScopedValueRollback fitting(m_fitting, true);
    for (int column = 0; column < int(widths.size()); ++column)
        m_view.header()->resizeSection(column, widths[size_t(column)]);
}

// That of the most characters stands for the widest: measuring thousands would cost more than showing them.
int ColumnWidths::longestText() const
{
    const QString *longest = nullptr;
    for (int row = 0; row < m_list.count(); ++row)
        if (const QString &text = m_list.item(row).text; !longest || text.size() > longest->size())
            longest = &text;
    if (!longest)
        return 0;
    const QStyle *style = m_view.style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &m_view) + 1;
    const int icon = style->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &m_view);
    return m_view.fontMetrics().horizontalAdvance(*longest) + icon + 5 * margin;
}

bool ColumnWidths::keyPressed(const QKeyEvent &key)
{
    const int by = key.key() == Qt::Key_Right ? 1 : key.key() == Qt::Key_Left ? -1 : 0;
    if (by == 0 || !(key.modifiers() & Qt::ControlModifier) || key.modifiers() & Qt::AltModifier)
        return false;
    const QModelIndex current = m_view.currentIndex();
    const int column = qMax(0, current.column());
    if (key.modifiers() & Qt::ShiftModifier) {
        QHeaderView *header = m_view.header();
        header->resizeSection(column, qMax(header->minimumSectionSize(), header->sectionSize(column) + by * step));
    } else if (const QModelIndex next = current.siblingAtColumn(column + by); next.isValid()) {
        m_view.selectionModel()->setCurrentIndex(next, QItemSelectionModel::NoUpdate);
        m_view.scrollTo(next);
    }
    return true;
}

bool ColumnWidths::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        return keyPressed(*static_cast<QKeyEvent *>(event));
    if (event->type() == QEvent::Resize && watched == m_view.viewport())
        fit();
    if (event->type() != QEvent::ToolTip)
        return false;
    const auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex index = m_view.indexAt(help->pos());
    const bool cut = m_view.sizeHintForIndex(index).width() > m_view.visualRect(index).width();
    QToolTip::showText(help->globalPos(), cut ? index.data().toString() : QString(), &m_view);
    return true;
}
