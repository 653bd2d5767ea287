#pragma once

#include <QColor>
#include <QList>
#include <QRectF>
#include <QString>

#include <vector>

struct Band;

/// Something that a page shows, in twips from the page's upper left corner.
struct PageElement {
    enum Kind { Text, BarCode, Rule, Shade, Bar };
    Kind kind = Text;
    QRectF rect;
    QString text; ///< one line, short enough for `rect`
    QString cellText; ///< of a cell's first line: the text of all its lines
    double size = 0; ///< points
    bool bold = false;
    Qt::Alignment alignment = Qt::AlignLeft;
    QColor color = Qt::black;
};

/// A band, or a part of a tall one, where the layout put it.
struct PlacedBand {
    const Band *band = nullptr;
    int row = -1;
    bool continued = false; ///< a group's header again, on a further page
    bool shaded = false;
    int label = -1; ///< its place in a row of labels, from 0
    /// The strips of the band that stand here.
    int firstStrip = 0;
    int stripCount = 0;
    /// In twips from the page's top.
    double top = 0;
    double height = 0;
};

struct Page {
    std::vector<PlacedBand> bands;
    /// What the page's header and footer take their fields from.
    int firstRow = -1;
    int lastRow = -1;
};
