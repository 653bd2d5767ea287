#pragma once

#include <QAbstractScrollArea>

class Report;

/// The pages of a report, one below the other. A page is painted when it comes into sight.
class PageView : public QAbstractScrollArea
{
    Q_OBJECT
public:
    enum Fit { FixedZoom, FitWidth, FitPage };
    static constexpr double smallestZoom = 0.25;
    static constexpr double largestZoom = 4;
    /// From one step of the zoom to the next.
    static constexpr double zoomStep = 1.25;

    /// A place on a page, in twips.
    struct Place {
        int page = 0;
        QRectF rect;
    };

    explicit PageView(QWidget *parent = nullptr);
    void setReport(const Report *report);
    /// To be called when the report has further pages.
    void updatePages();

    /// 1 is the paper's own size.
    double zoom() const { return m_zoom; }
    Fit fit() const { return m_fit; }
    void setZoom(double zoom);
    void setFit(Fit fit);

    /// The page that was gone to, or scrolled into the middle of the window; from 0.
    int currentPage() const { return m_currentPage; }
    void goToPage(int page);

    /// Marks places on the pages, given from the first page to the last; none of them is the current one.
    void setPlaces(const QList<Place> &places);
    /// Number of the first place on `page` or behind it; the number of places where there is none.
    int firstPlaceFrom(int page) const;
    /// Brings a place into sight and marks it as the current one.
    void goToPlace(int number);

signals:
    void currentPageChanged(int page);
    void zoomChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    /// Pixels in a twip.
    double scale() const;
    /// In pixels, without and with the gap below.
    QSize pageSize() const;
    int pageStep() const;
    int contentWidth() const;
    /// Corner of a page in the window, as it is scrolled.
    QPoint pageOrigin(int page) const;
    int pageAt(int y) const;
    QRectF inWindow(const Place &place) const;
    void applyFit();
    void changeZoom(double zoom);
    void updateScrollBars();
    void setCurrentPage(int page);

    const Report *m_report = nullptr;
    int m_pageCount = 0;
    double m_zoom = 1;
    Fit m_fit = FitWidth;
    int m_currentPage = 0;
    QList<Place> m_places; ///< from the first page to the last
    int m_currentPlace = -1;
};
