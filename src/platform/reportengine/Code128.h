#pragma once

#include <QString>

#include <vector>

/// Bar code "Code 128".
namespace Code128 {

/// The widths of bars and gaps in turn, a bar first, in modules; nothing for a text with other characters than ASCII's
/// printable ones.
std::vector<int> encode(const QString &text);

/// The width of a module, in twips, with which a bar code and the blank zones that a reader needs at both ends fit into
/// `width` twips; 0 where they would become too fine to be read.
int moduleWidth(const std::vector<int> &bars, double width);
/// On each side.
constexpr int blankModules = 10;

}
