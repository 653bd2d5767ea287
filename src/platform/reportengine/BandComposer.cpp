#include "platform/reportengine/BandComposer.h"

#include "platform/reportengine/Code128.h"
#include "platform/text/Format.h"

#include <algorithm>
#include <numeric>

namespace {
constexpr double cellPadding = 2 * TextMeasure::twipsPerPoint; ///< left and right of a cell's text
constexpr double ruleHeight = 4 * TextMeasure::twipsPerPoint;
constexpr double barcodeGap = 2 * TextMeasure::twipsPerPoint; ///< below the bars
// Parts of a chart: at most so much of the width is for texts, the rest is for bars.
constexpr double widestLabel = 0.4;
constexpr double widestValue = 0.2;
constexpr double chartGap = 4 * TextMeasure::twipsPerPoint; ///< between texts and bars
constexpr double axisWidth = 0.5 * TextMeasure::twipsPerPoint;
// Bars are to be told from white and from black, on paper without colours too.
constexpr QRgb barColor = qRgb(0x5b, 0x84, 0xb1);
constexpr QRgb axisColor = qRgb(0x60, 0x60, 0x60);

bool dependsOnPage(const Cell &cell)
{
    return std::any_of(cell.text.begin(), cell.text.end(),
                       [](const TextPiece &piece) { return piece.dependsOnPage(); });
}

/// Line ends stay where a text may wrap; every other control character is a blank.
QString printable(QString text, bool keepsLineEnds)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar &c : text)
        if (c.category() == QChar::Other_Control && !(c == '\n' && keepsLineEnds))
            c = ' ';
    return text;
}
}

BandComposer::BandComposer(const Template &report, const GroupedRecords &records,
                           const QHash<QString, QString> &parameters, const QDateTime &now)
    : m_records(records),
      m_charts(report.charts),
      m_parameters(parameters),
      m_now(now),
      m_measure(report.font),
      m_pageSize(report.pageLayout().fullRect(QPageLayout::Point).size() * TextMeasure::twipsPerPoint),
      m_margin(report.margin * TextMeasure::twipsPerPoint),
      m_sideMargin(report.sideMargin * TextMeasure::twipsPerPoint),
      m_labelWidth(report.detailWidth() * TextMeasure::twipsPerPoint),
      m_labelStep(m_labelWidth + report.labels.gap * TextMeasure::twipsPerPoint)
{
    double total = 0;
    for (const GridColumn &column : report.columns)
        total += column.width;
    double edge = 0;
    m_columnEdges.push_back(edge);
    for (const GridColumn &column : report.columns)
        m_columnEdges.push_back(edge += column.width / total);
}

double BandComposer::left(const BandContext &context) const
{
    return m_sideMargin + std::max(0, context.label) * m_labelStep;
}

double BandComposer::width(const BandContext &context) const
{
    return context.label < 0 ? m_pageSize.width() - 2 * m_sideMargin : m_labelWidth;
}

std::vector<double> BandComposer::stripHeights(const Band &band, const BandContext &context)
{
    std::vector<double> heights;
    if (!holds(band.when, context) && !context.hasFixedHeight)
        return heights;
    for (const BandLine &line : band.lines)
        if (isPrinted(line, context))
            heights.insert(heights.end(), stripCount(line, context), stripHeight(line));
    return heights;
}

double BandComposer::height(const Band &band, const BandContext &context)
{
    const std::vector<double> heights = stripHeights(band, context);
    return std::accumulate(heights.begin(), heights.end(), 0.0);
}

double BandComposer::tallestStrip(const Band &band)
{
    double tallest = 0;
    for (const BandLine &line : band.lines)
        tallest = std::max(tallest, stripHeight(line));
    return tallest;
}

void BandComposer::compose(const Band &band, const BandContext &context, int first, int count, double top,
                           QList<PageElement> &elements)
{
    if (!holds(band.when, context))
        return;
    int strip = 0;
    for (const BandLine &line : band.lines) {
        if (!isPrinted(line, context))
            continue;
        const int strips = stripCount(line, context);
        const int begin = std::max(strip, first);
        const int end = std::min(strip + strips, first + count);
        if (begin < end && line.isRule)
            elements.append(ruleElement(context, top));
        else if (begin < end && line.chart >= 0)
            composeChart(line, context, begin - strip, end - strip, top, elements);
        else if (begin < end && holds(line.when, context))
            for (const PrintedCell &printed : printedCells(line, context, false))
                for (int i = begin - strip; i < std::min<int>(end - strip, printed.lines.size()); ++i)
                    if (!printed.lines[i].isEmpty()) {
                        elements.append(cellElement(*printed.cell, line, context, printed.lines[i],
                                                    top + (i - (begin - strip)) * stripHeight(line)));
                        if (i == 0)
                            elements.last().cellText = printed.lines.size() > 1 ? printed.text : elements.last().text;
                    }
        top += std::max(0, end - begin) * stripHeight(line);
        strip += strips;
    }
}

bool BandComposer::holds(const Formula &when, const BandContext &context) const
{
    return when.isEmpty() || (context.row >= 0 && when.matches(m_records.record(context.row)));
}

bool BandComposer::isPrinted(const BandLine &line, const BandContext &context) const
{
    return context.hasFixedHeight || holds(line.when, context);
}

QList<BandComposer::PrintedCell> BandComposer::printedCells(const BandLine &line, const BandContext &context,
                                                            bool onlyWrapped)
{
    QList<PrintedCell> cells;
    std::bitset<64> taken;
    for (const Cell &cell : line.cells) {
        bool isFree = true;
        for (int column = cell.firstColumn; column <= cell.lastColumn; ++column)
            isFree = isFree && !taken[column];
        if (!isFree || !holds(cell.when, context))
            continue;
        for (int column = cell.firstColumn; column <= cell.lastColumn; ++column)
            taken[column] = true;
        // How often a text wraps must not hang on a page number that is not known yet.
        const bool wraps = cell.maxLines > 1 && !context.hasFixedHeight && !dependsOnPage(cell);
        if (onlyWrapped && !wraps)
            continue;
        const QString text = printable(expanded(cell.text, context), wraps);
        cells.append(
            {&cell, text, wraps ? broken(cell, line, text, cellRect(cell, context).width()) : QStringList(text)});
    }
    return cells;
}

int BandComposer::stripCount(const BandLine &line, const BandContext &context)
{
    if (line.chart >= 0)
        return chartBarCount(m_charts[line.chart], m_records, context.row);
    int count = 1;
    for (const PrintedCell &printed : printedCells(line, context, true))
        count = std::max(count, int(printed.lines.size()));
    return count;
}

double BandComposer::stripHeight(const BandLine &line)
{
    return line.isRule ? ruleHeight : m_measure.lineHeight(line.size);
}

QRectF BandComposer::cellRect(const Cell &cell, const BandContext &context) const
{
    const auto edge = [&](int column) { return left(context) + width(context) * m_columnEdges[column]; };
    const double textLeft = edge(cell.firstColumn) + cellPadding;
    return {textLeft, 0, std::max(0.0, edge(cell.lastColumn + 1) - cellPadding - textLeft), 0};
}

/// The last line that the text may take shows an ellipsis where more follows.
QStringList BandComposer::broken(const Cell &cell, const BandLine &line, const QString &text, double width)
{
    QStringList lines = m_measure.wrapped(text, width, line.size, cell.bold);
    if (lines.size() > cell.maxLines) {
        const QString rest = lines.mid(cell.maxLines - 1).join(' ');
        lines.resize(cell.maxLines);
        lines.last() = m_measure.elided(rest, width, line.size, cell.bold);
    }
    return lines;
}

QString BandComposer::expanded(const QList<TextPiece> &text, const BandContext &context) const
{
    QString result;
    for (const TextPiece &piece : text)
        result += expanded(piece, context);
    return result;
}

QString BandComposer::expanded(const TextPiece &piece, const BandContext &context) const
{
    const auto pageNumber = [](int number) { return number < 0 ? QStringLiteral("\u2026") : QString::number(number); };
    switch (piece.kind) {
    case TextPiece::Literal:
        return piece.text;
    case TextPiece::FieldValue:
        return context.row < 0 ? QString() : piece.format.apply(m_records.record(context.row)[piece.number]);
    case TextPiece::AggregateValue:
        return piece.format.apply(m_records.aggregate(piece.number, context.row));
    case TextPiece::PageNumber:
        return pageNumber(context.page < 0 ? -1 : context.page + 1);
    case TextPiece::PageCount:
        return pageNumber(context.pageCount);
    case TextPiece::Today:
        return Format::shortDate(Format::generalDate(m_now));
    case TextPiece::Now:
        return Format::generalDate(m_now);
    case TextPiece::RowCount:
        return QString::number(m_records.recordCount());
    case TextPiece::Continued:
        return context.continued ? QStringLiteral(" (continued)") : QString();
    case TextPiece::Parameter:
        return m_parameters.value(piece.text);
    }
    Q_UNREACHABLE();
}

PageElement BandComposer::ruleElement(const BandContext &context, double top) const
{
    PageElement element;
    element.kind = PageElement::Rule;
    element.rect = QRectF(left(context), top + ruleHeight / 2, width(context), 0);
    return element;
}

void BandComposer::composeChart(const BandLine &line, const BandContext &context, int first, int end, double top,
                                QList<PageElement> &elements)
{
    const Chart &chart = m_charts[line.chart];
    const std::vector<ChartBar> bars = chartBars(chart, m_records, context.row);
    double labelWidth = 0, valueWidth = 0, lowest = 0, highest = 0;
    QStringList labels, values;
    for (const ChartBar &bar : bars) {
        labels.append(printable(labelOf(line, bar), false));
        values.append(chart.value.format.apply(bar.value));
        labelWidth = std::max(labelWidth, m_measure.width(labels.last(), line.size, false));
        valueWidth = std::max(valueWidth, m_measure.width(values.last(), line.size, false));
        if (bar.row < 0)
            continue;
        lowest = std::min(lowest, bar.value.toNumber());
        highest = std::max(highest, bar.value.toNumber());
    }
    const double textLeft = left(context) + cellPadding;
    const double textRight = left(context) + width(context) - cellPadding;
    labelWidth = std::ceil(std::min(labelWidth, (textRight - textLeft) * widestLabel));
    valueWidth = std::ceil(std::min(valueWidth, (textRight - textLeft) * widestValue));
    const double barLeft = textLeft + labelWidth + chartGap;
    const double barRight = textRight - valueWidth - chartGap;
    const double scale = highest > lowest ? (barRight - barLeft) / (highest - lowest) : 0;
    const double zero = barLeft - lowest * scale;
    const double height = m_measure.lineHeight(line.size);

    const auto addText = [&](const QString &text, double left, double width, Qt::Alignment alignment) {
        PageElement element;
        element.size = line.size;
        element.alignment = alignment;
        element.rect = QRectF(left, top, width, height);
        element.text = m_measure.elided(text, width, line.size, false, Qt::ElideMiddle);
        element.cellText = element.text;
        elements.append(element);
    };
    const auto addBar = [&](const QRectF &rect, QRgb color) {
        PageElement element;
        element.kind = PageElement::Bar;
        element.rect = rect;
        element.color = color;
        elements.append(element);
    };
    for (int i = first; i < end; ++i, top += height) {
        addText(labels[i], textLeft, labelWidth, Qt::AlignRight);
        addBar(QRectF(zero - axisWidth / 2, top, axisWidth, height), axisColor);
        addText(values[i], textRight - valueWidth, valueWidth, Qt::AlignRight);
        const double length = bars[i].value.toNumber() * scale;
        // Beside all the others together the largest would look small.
        if (bars[i].row >= 0)
            addBar(QRectF(zero, top + height * 0.15, length, height * 0.7).normalized(), barColor);
    }
}

QString BandComposer::labelOf(const BandLine &line, const ChartBar &bar) const
{
    const BandContext context{.row = bar.row};
    if (bar.row < 0)
        return QStringLiteral("%1 others").arg(bar.groups);
    for (const Cell &label : line.cells)
        if (holds(label.when, context))
            return expanded(label.text, context);
    return {};
}

PageElement BandComposer::cellElement(const Cell &cell, const BandLine &line, const BandContext &context,
                                      const QString &text, double top)
{
    PageElement element;
    element.size = line.size;
    element.bold = cell.bold;
    element.alignment = cell.alignment;
    element.rect = cellRect(cell, context);
    element.rect.moveTop(top);
    element.rect.setHeight(m_measure.lineHeight(line.size));
    if (cell.isBarcode && !Code128::bars(text, element.rect, element.alignment).isEmpty()) {
        element.kind = PageElement::BarCode;
        element.text = text;
        element.rect.setHeight(element.rect.height() - barcodeGap);
    } else {
        element.text = m_measure.elided(text, element.rect.width(), line.size, cell.bold);
    }
    return element;
}
