#include "platform/reportengine/Pagination.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace {
// Heights that add up to a page's do so even where they are fractions of a twip.
constexpr double tolerance = 0.01;

BandContext rowContext(int row, bool continued = false) { return {.row = row, .continued = continued}; }

BandContext labelContext(int row, int label) { return {.row = row, .label = label}; }

BandContext pageContext(int row) { return {.row = row, .hasFixedHeight = true}; }
}

Pagination::Pagination(const Template &report, const GroupedRecords &records, BandComposer &composer)
    : m_template(report),
      m_records(records),
      m_composer(composer),
      m_top(composer.margin() + composer.height(report.pageHeader, pageContext(-1))),
      m_bottom(composer.pageSize().height() - composer.margin() - composer.height(report.pageFooter, pageContext(-1))),
      m_labelHeight(report.labels.height > 0 ? report.labels.height * TextMeasure::twipsPerPoint : m_bottom - m_top),
      m_detailHeights(size_t(records.count()), -1)
{
    const double detail = composer.tallestStrip(report.detail);
    const auto refuse = [&](const QString &reason) {
        throw ReportError(ResultCode::cannotLoadReport, QStringLiteral("%1: %2").arg(report.fileName, reason));
    };
    if (hasLabels() && m_labelHeight > m_bottom - m_top + tolerance)
        refuse(QStringLiteral("a label is higher than a page"));
    if (hasLabels() && detail > m_labelHeight + tolerance)
        refuse(QStringLiteral("a line is higher than a label"));
    double tallest = std::max({composer.tallestStrip(report.reportHeader), hasLabels() ? 0 : detail,
                               composer.tallestStrip(report.reportFooter), composer.tallestStrip(report.noData)});
    for (const Group &group : report.groups)
        tallest = std::max({tallest, composer.tallestStrip(group.header), composer.tallestStrip(group.footer)});
    // Headings that are repeated may take half of a page.
    if (m_bottom - m_top < 2 * tallest)
        refuse(QStringLiteral("the pages' header and footer leave no room for rows"));
}

bool Pagination::advance(const QDeadlineTimer &deadline)
{
    if (m_pages.empty()) {
        beginPage(m_records.count() > 0 ? 0 : -1, 0);
        if (m_records.count() > 0)
            place(m_template.reportHeader, 0, 0);
        m_pageHasRows = m_y > m_top;
    }
    while (m_nextRow < m_records.count()) {
        if (deadline.hasExpired())
            return false;
        placeRow(m_nextRow++);
    }
    if (!m_isComplete)
        placeLastBand();
    m_isComplete = true;
    return true;
}

double Pagination::progress() const { return m_isComplete ? 1 : double(m_nextRow) / std::max(1, m_records.count()); }

QList<PageElement> Pagination::elements(int number) const
{
    const Page &page = m_pages[number];
    const auto numbered = [&](BandContext context) {
        context.page = number;
        context.pageCount = m_isComplete ? pageCount() : -1;
        return context;
    };
    QList<PageElement> elements;
    const auto fixed = [&](const Band &band, int row, double top) {
        m_composer.compose(band, numbered(pageContext(row)), 0, std::numeric_limits<int>::max(), top, elements);
    };
    fixed(m_template.pageHeader, page.firstRow, m_composer.margin());
    for (const PlacedBand &placed : page.bands) {
        BandContext context = numbered(rowContext(placed.row, placed.continued));
        context.label = placed.label;
        if (placed.shaded && m_template.shade.isValid()) {
            PageElement shade;
            shade.kind = PageElement::Shade;
            shade.rect = QRectF(m_composer.left(context), placed.top, m_composer.width(context), placed.height);
            shade.color = m_template.shade;
            elements.append(shade);
        }
        m_composer.compose(*placed.band, context, placed.firstStrip, placed.stripCount, placed.top, elements);
    }
    fixed(m_template.pageFooter, page.lastRow, m_bottom);
    return elements;
}

void Pagination::placeRow(int row)
{
    const int opening = m_records.firstOpening(row);
    if (labelOf(row) <= 0) {
        const bool fits = keptHeight(row) <= room();
        if ((row > 0 && startsPage(row)) || (!fits && m_pageHasRows))
            beginPage(row, opening);
    }
    for (int level = opening; level < levels(); ++level)
        place(m_template.groups[level].header, row, level);
    if (opening < levels())
        m_nextIsShaded = false;
    m_pages.back().lastRow = row;
    if (hasLabels())
        placeLabel(row, m_nextIsShaded);
    else
        place(m_template.detail, row, levels(), footersHeight(row), m_nextIsShaded);
    m_nextIsShaded = !m_nextIsShaded;
    m_pageHasRows = true;
    for (int level = levels() - 1; level >= m_records.firstClosing(row); --level)
        place(m_template.groups[level].footer, row, level + 1);
}

double Pagination::room() const { return m_bottom - m_y + tolerance; }

/// The place of a row's label among those beside it, from 0; -1 where details are no labels.
int Pagination::labelOf(int row) const
{
    if (!hasLabels())
        return -1;
    return (row - (levels() > 0 ? m_records.run(levels() - 1, row).first : 0)) % m_template.labels.across;
}

/// The last row that stands beside `row`.
int Pagination::lastBeside(int row) const
{
    if (!hasLabels())
        return row;
    const int last = levels() > 0 ? m_records.run(levels() - 1, row).last : m_records.count() - 1;
    return std::min(last, row - labelOf(row) + m_template.labels.across - 1);
}

/// All labels are equally high. What one of them has no room for is not printed.
void Pagination::placeLabel(int row, bool shaded)
{
    const BandContext context = labelContext(row, labelOf(row));
    if (context.label == 0) {
        if (m_labelHeight > room())
            beginPage(row, levels());
        m_y += m_labelHeight;
    }
    PlacedBand label;
    label.band = &m_template.detail;
    label.row = row;
    label.shaded = shaded;
    label.label = context.label;
    label.top = m_y - m_labelHeight;
    label.height = m_labelHeight;
    double used = 0;
    for (const double height : m_composer.stripHeights(m_template.detail, context)) {
        used += height;
        if (used > m_labelHeight + tolerance)
            break;
        ++label.stripCount;
    }
    m_pages.back().bands.push_back(label);
}

void Pagination::placeLastBand()
{
    if (m_records.count() == 0)
        place(m_template.noData, -1, 0);
    else
        place(m_template.reportFooter, m_records.count() - 1, 0);
}

bool Pagination::startsPage(int row) const
{
    for (int level = m_records.firstOpening(row); level < levels(); ++level)
        if (m_template.groups[level].startsPage)
            return true;
    return false;
}

/// The height of what must not be torn apart: the headings that begin with `row`, as many rows as they ask for, and the
/// footers of the last one.
double Pagination::keptHeight(int row)
{
    double height = 0;
    for (int r = row, last = row; r <= last && height <= m_bottom - m_top; ++r) {
        last = std::max(last, lastBeside(r));
        for (int level = m_records.firstOpening(r); level < levels(); ++level) {
            const Group &group = m_template.groups[level];
            height += m_composer.height(group.header, rowContext(r));
            last = std::max(last, std::min(r + group.keep - 1, m_records.run(level, r).last));
        }
        height += detailHeight(r) + footersHeight(r);
    }
    return height;
}

/// Of the first of the labels beside each other: the height of all of them.
double Pagination::detailHeight(int row)
{
    if (hasLabels())
        return labelOf(row) == 0 ? m_labelHeight : 0;
    float &height = m_detailHeights[row];
    if (height < 0)
        height = float(m_composer.height(m_template.detail, rowContext(row)));
    return height;
}

double Pagination::footersHeight(int row)
{
    double height = 0;
    for (int level = m_records.firstClosing(row); level < levels(); ++level)
        height += m_composer.height(m_template.groups[level].footer, rowContext(row));
    if (row == m_records.count() - 1)
        height += m_composer.height(m_template.reportFooter, rowContext(row));
    return height;
}

double Pagination::repeatedHeight(int row, int continuedLevels)
{
    double height = 0;
    for (int level = 0; level < continuedLevels; ++level)
        if (m_template.groups[level].repeatsHeader)
            height += m_composer.height(m_template.groups[level].header, rowContext(row, true));
    return height <= (m_bottom - m_top) / 2 ? height : 0;
}

/// Begins a page in the midst of the groups of the outer `continuedLevels` levels of `row`.
void Pagination::beginPage(int row, int continuedLevels)
{
    if (pageCount() == maxPages)
        throw ReportError(ResultCode::outOfMemory, QStringLiteral("more than %1 pages").arg(maxPages));
    m_pages.emplace_back();
    m_pages.back().firstRow = m_pages.back().lastRow = row;
    m_y = m_top;
    m_pageHasRows = false;
    if (repeatedHeight(row, continuedLevels) == 0)
        return;
    for (int level = 0; level < continuedLevels; ++level)
        if (m_template.groups[level].repeatsHeader)
            placeWhole(m_template.groups[level].header, rowContext(row, true));
}

/// Places a band on this page if it fits, else on the next one if it fits there, else in parts. `below` is the height
/// of the footers that follow: a page on which they stand has at least the band's last strip above them.
void Pagination::place(const Band &band, int row, int continuedLevels, double below, bool shaded)
{
    const std::vector<double> strips = m_composer.stripHeights(band, rowContext(row));
    const double height = std::accumulate(strips.begin(), strips.end(), 0.0);
    if (height > room() && m_pageHasRows && height <= m_bottom - m_top - repeatedHeight(row, continuedLevels))
        beginPage(row, continuedLevels);
    PlacedBand part;
    part.band = &band;
    part.row = row;
    part.shaded = shaded;
    while (part.firstStrip < int(strips.size())) {
        part.stripCount = 0;
        part.height = 0;
        for (size_t next = part.firstStrip; next < strips.size() && part.height + strips[next] <= room(); ++next) {
            part.height += strips[next];
            ++part.stripCount;
        }
        const bool isLast = part.firstStrip + part.stripCount == int(strips.size());
        if (isLast && part.stripCount > 1 && part.height + below > room()) {
            part.height -= strips.back();
            --part.stripCount;
        }
        put(part);
        part.firstStrip += part.stripCount;
        if (part.firstStrip < int(strips.size()))
            beginPage(row, continuedLevels);
    }
}

void Pagination::placeWhole(const Band &band, const BandContext &context)
{
    const std::vector<double> strips = m_composer.stripHeights(band, context);
    PlacedBand whole;
    whole.band = &band;
    whole.row = context.row;
    whole.continued = context.continued;
    whole.stripCount = int(strips.size());
    whole.height = std::accumulate(strips.begin(), strips.end(), 0.0);
    put(whole);
}

void Pagination::put(PlacedBand placed)
{
    if (placed.stripCount == 0)
        return;
    placed.top = m_y;
    m_y += placed.height;
    m_pages.back().bands.push_back(placed);
}
