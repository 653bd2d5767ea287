#pragma once

#include <QList>
#include <QRectF>
#include <QString>

#include <vector>

/// Bar code "Code 128".
namespace Code128 {

/// The widths of bars and gaps in turn, a bar first, in modules; nothing for a text with other characters than ASCII's
/// printable ones.
std::vector<int> encode(const QString &text);

/// The dots of a label printer, in twips. It blackens whole ones: the edges of all bars lie between two of them.
constexpr double dot = 1440.0 / 203;
/// How fine bars may become, and how coarse, in dots. The finest ones are for printers with more of them.
constexpr double moduleWidths[] = {3, 2, 1.5};
/// That a reader needs on each side.
constexpr int blankModules = 10;

/// The bars of `text`, as high as `area`, with their blank zones within it; all in twips from the page's corner.
/// Nothing where the text cannot be encoded, or the bars would become too fine to be read.
QList<QRectF> bars(const QString &text, const QRectF &area, Qt::Alignment alignment);

}
