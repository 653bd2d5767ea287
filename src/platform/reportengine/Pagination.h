#pragma once

#include "platform/reportengine/BandComposer.h"

#include <QDeadlineTimer>

/// Puts the bands of a report on pages. Rows stay whole, a group's heading stays with its first rows and its footer
/// with its last one; only what is taller than a page is cut, between lines of text.
///
/// Labels go from the left to the right, then down. A group begins a row of them; what stands above or below a row of
/// labels has the page's width.
class Pagination
{
public:
    static constexpr int maxPages = 10'000;

    /// @throws ReportError 20525 when the pages' headers and footers leave no room for rows.
    Pagination(const Template &report, const GroupedRecords &records, BandComposer &composer);

    /// Goes on until everything is placed or the deadline is over. @returns whether everything is placed.
    /// @throws ReportError 20500 for too many pages.
    bool advance(const QDeadlineTimer &deadline);
    bool isComplete() const { return m_isComplete; }
    /// The part that is placed, from 0 to 1.
    double progress() const;

    /// The pages so far; the last one may still grow.
    int pageCount() const { return int(m_pages.size()); }
    const Page &page(int number) const { return m_pages[number]; }
    QList<PageElement> elements(int page) const;

private:
    int levels() const { return int(m_template.groups.size()); }
    double room() const;
    bool hasLabels() const { return m_template.labels.across > 0; }
    int labelOf(int row) const;
    int lastBeside(int row) const;
    void placeRow(int row);
    void placeLabel(int row, bool shaded);
    void placeLastBand();
    bool startsPage(int row) const;
    double keptHeight(int row);
    double detailHeight(int row);
    double footersHeight(int row);
    double repeatedHeight(int row, int levels);
    void beginPage(int row, int continuedLevels);
    void place(const Band &band, int row, int continuedLevels, double below = 0, bool shaded = false);
    void placeWhole(const Band &band, const BandContext &context);
    void put(PlacedBand placed);

    const Template &m_template;
    const GroupedRecords &m_records;
    BandComposer &m_composer;
    // In twips: where rows begin and end on a page, below its header and above its footer.
    double m_top;
    double m_bottom;
    double m_labelHeight;

    std::vector<Page> m_pages;
    double m_y = 0; ///< where the next band goes
    bool m_pageHasRows = false; ///< more than headings
    int m_nextRow = 0;
    bool m_nextIsShaded = false;
    bool m_isComplete = false;
    std::vector<float> m_detailHeights; ///< by row; negative: not measured yet
};
