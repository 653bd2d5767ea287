#pragma once

#include "platform/reportengine/ChartBars.h"
#include "platform/reportengine/GroupedRecords.h"
#include "platform/reportengine/Page.h"
#include "platform/reportengine/TextMeasure.h"

#include <QDateTime>
#include <QSizeF>

#include <bitset>

/// What a band's texts are filled in from.
struct BandContext {
    int row = -1; ///< -1: no record
    bool continued = false;
    int page = -1; ///< from 0; -1 while it is not known
    int pageCount = -1;
    /// For the page's own header and footer, which are as high on every page: no text in them wraps, and a line whose
    /// condition does not hold stays blank.
    bool hasFixedHeight = false;
    int label = -1; ///< the place in a row of labels that the band has to itself; -1: the width of the page
};

/// Turns bands into elements of a page. A band is a pile of strips, one for each printed line of text; a tall band can
/// be cut between them.
class BandComposer
{
public:
    BandComposer(const Template &report, const GroupedRecords &records, const QHash<QString, QString> &parameters,
                 const QDateTime &now);

    /// In twips, as everything here.
    QSizeF pageSize() const { return m_pageSize; }
    double margin() const { return m_margin; }
    /// How far a band reaches from the left to the right.
    double left(const BandContext &context) const;
    double width(const BandContext &context) const;
    TextMeasure &measure() { return m_measure; }

    /// The heights of the strips that are printed of the band, none where its condition does not hold.
    std::vector<double> stripHeights(const Band &band, const BandContext &context);
    double height(const Band &band, const BandContext &context);
    /// The height of the tallest strip that the band may come to have.
    double tallestStrip(const Band &band);
    /// Adds what strips `first` to `first + count - 1` show to `elements`; the first of them begins at `top`.
    void compose(const Band &band, const BandContext &context, int first, int count, double top,
                 QList<PageElement> &elements);

private:
    /// A cell that is printed in a line, its text broken where its column wraps.
    struct PrintedCell {
        const Cell *cell;
        QString text;
        QStringList lines;
    };

    bool holds(const Formula &when, const BandContext &context) const;
    bool isPrinted(const BandLine &line, const BandContext &context) const;
    QList<PrintedCell> printedCells(const BandLine &line, const BandContext &context, bool onlyWrapped);
    int stripCount(const BandLine &line, const BandContext &context);
    double stripHeight(const BandLine &line);
    QRectF cellRect(const Cell &cell, const BandContext &context) const;
    QStringList broken(const Cell &cell, const BandLine &line, const QString &text, double width);
    QString expanded(const QList<TextPiece> &text, const BandContext &context) const;
    QString expanded(const TextPiece &piece, const BandContext &context) const;
    PageElement ruleElement(const BandContext &context, double top) const;
    /// The bars `first` to `end` of a chart, the first of them at `top`.
    void composeChart(const BandLine &line, const BandContext &context, int first, int end, double top,
                      QList<PageElement> &elements);
    QString labelOf(const BandLine &line, const ChartBar &bar) const;
    PageElement cellElement(const Cell &cell, const BandLine &line, const BandContext &context, const QString &text,
                            double top);

    const GroupedRecords &m_records;
    const QList<Chart> &m_charts;
    QHash<QString, QString> m_parameters;
    QDateTime m_now;
    TextMeasure m_measure;
    QSizeF m_pageSize;
    double m_margin;
    double m_sideMargin;
    double m_labelWidth;
    double m_labelStep; ///< from a label to the next one beside it
    std::vector<double> m_columnEdges; ///< one more than there are columns; parts of a band's width
};
