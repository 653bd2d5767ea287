#include "platform/reportcontrol/PageView.h"

#include "platform/reportengine/Report.h"
#include "platform/reportengine/TextMeasure.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr int gap = 12; ///< pixels around each page
constexpr int wheelStep = 120;

}

PageView::PageView(QWidget *parent) : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
    // The room beside the pages does not depend on their number.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

void PageView::setReport(const Report *report)
{
    m_report = report;
    updatePages();
    applyFit();
}

void PageView::updatePages()
{
    m_pageCount = m_report->pageCount();
    updateScrollBars();
    // The last page may have grown.
    viewport()->update();
}

double PageView::scale() const { return m_zoom * logicalDpiY() / TextMeasure::twipsPerInch; }

QSize PageView::pageSize() const { return (m_report->pageSize() * scale()).toSize(); }

QPoint PageView::pageOrigin(int page) const
{
    const QSize size = pageSize();
    const int spare = viewport()->width() - contentWidth();
    return {gap + std::max(0, spare / 2) - horizontalScrollBar()->value(),
            gap + page * (size.height() + gap) - verticalScrollBar()->value()};
}

int PageView::pageStep() const { return pageSize().height() + gap; }

int PageView::contentWidth() const { return pageSize().width() + 2 * gap; }

int PageView::pageAt(int y) const
{
    const int page = (y + verticalScrollBar()->value() - gap / 2) / pageStep();
    return std::clamp(page, 0, m_pageCount - 1);
}

QRectF PageView::inWindow(const Place &place) const
{
    return QRectF(place.rect.topLeft() * scale(), place.rect.size() * scale()).translated(pageOrigin(place.page));
}

void PageView::setZoom(double zoom)
{
    m_fit = FixedZoom;
    changeZoom(zoom);
}

void PageView::setFit(Fit fit)
{
    m_fit = fit;
    applyFit();
    if (m_fit == FitPage)
        goToPage(m_currentPage);
}

void PageView::applyFit()
{
    if (!m_report)
        return;
    if (m_fit == FixedZoom) {
        updateScrollBars();
        return;
    }
    const QSizeF room = (viewport()->size() - QSize(2 * gap, 2 * gap)).expandedTo({1, 1});
    const QSizeF paper = m_report->pageSize() * logicalDpiY() / TextMeasure::twipsPerInch;
    const double toWidth = room.width() / paper.width();
    changeZoom(m_fit == FitWidth ? toWidth : std::min(toWidth, room.height() / paper.height()));
}

void PageView::changeZoom(double zoom)
{
    // What is at the top of the window stays there, and so does the middle from left to right.
    const double above = double(verticalScrollBar()->value()) / pageStep();
    const int half = viewport()->width() / 2;
    const double middle = double(horizontalScrollBar()->value() + half) / contentWidth();
    const int current = m_currentPage;

    m_zoom = std::clamp(zoom, smallestZoom, largestZoom);
    updateScrollBars();
    verticalScrollBar()->setValue(int(std::lround(above * pageStep())));
    horizontalScrollBar()->setValue(int(std::lround(middle * contentWidth())) - half);
    setCurrentPage(current);
    viewport()->update();
    emit zoomChanged();
}

void PageView::updateScrollBars()
{
    const QSize window = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, contentWidth() - window.width()));
    horizontalScrollBar()->setPageStep(window.width());
    horizontalScrollBar()->setSingleStep(fontMetrics().height() * 2);
    verticalScrollBar()->setRange(0, std::max(0, gap + m_pageCount * pageStep() - window.height()));
    verticalScrollBar()->setPageStep(window.height());
    verticalScrollBar()->setSingleStep(fontMetrics().height() * 2);
}

void PageView::goToPage(int page)
{
    page = std::clamp(page, 0, m_pageCount - 1);
    verticalScrollBar()->setValue(page * pageStep());
    setCurrentPage(page);
}

void PageView::setCurrentPage(int page)
{
    if (page == m_currentPage)
        return;
    m_currentPage = page;
    emit currentPageChanged(page);
}

void PageView::setPlaces(const QList<Place> &places)
{
    m_places = places;
    m_currentPlace = -1;
    viewport()->update();
}

int PageView::firstPlaceFrom(int page) const
{
    const auto place = std::lower_bound(m_places.begin(), m_places.end(), page,
                                        [](const Place &place, int page) { return place.page < page; });
    return int(place - m_places.begin());
}

void PageView::goToPlace(int number)
{
    m_currentPlace = number;
    const QRectF place = inWindow(m_places[number]);
    if (!QRectF(viewport()->rect()).contains(place)) {
        const QPointF way = place.center() - QRectF(viewport()->rect()).center();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + int(way.x()));
        verticalScrollBar()->setValue(verticalScrollBar()->value() + int(way.y()));
    }
    setCurrentPage(m_places[number].page);
    viewport()->update();
}

void PageView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const int last = pageAt(event->rect().bottom());
    for (int page = pageAt(event->rect().top()); page <= last; ++page) {
        const QRect paper(pageOrigin(page), pageSize());
        painter.fillRect(paper, Qt::white);
        painter.save();
        painter.translate(paper.topLeft());
        painter.scale(scale(), scale());
        m_report->paint(painter, page);
        painter.restore();
        painter.setPen(palette().color(QPalette::Shadow));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(paper.adjusted(-1, -1, 0, 0));
    }
    // The text below stays as black as it is.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    for (int i = firstPlaceFrom(pageAt(event->rect().top())); i < m_places.size() && m_places[i].page <= last; ++i) {
        const bool isCurrent = i == m_currentPlace;
        painter.setPen(isCurrent ? QPen(Qt::black, 2) : QPen(Qt::NoPen));
        painter.setBrush(isCurrent ? QColor(255, 190, 100) : QColor(255, 240, 130));
        painter.drawRect(inWindow(m_places[i]));
    }
}

void PageView::resizeEvent(QResizeEvent *) { applyFit(); }

void PageView::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier)
        setZoom(m_zoom * std::pow(zoomStep, double(event->angleDelta().y()) / wheelStep));
    else
        QAbstractScrollArea::wheelEvent(event);
}

void PageView::scrollContentsBy(int dx, int dy)
{
    viewport()->scroll(dx, dy);
    const QScrollBar *bar = verticalScrollBar();
    if (bar->value() == bar->minimum())
        setCurrentPage(0);
    else
        setCurrentPage(bar->value() == bar->maximum() ? m_pageCount - 1 : pageAt(viewport()->height() / 2));
}
