#pragma once

#include <QString>

#include <optional>

/// How prices are written: what stands before the decimals. The other sign, an apostrophe or a blank may stand between
/// thousands.
enum class DecimalSign { Point, Comma };

/// The amount that the whole of `text` stands for in that notation, also with the sign of a currency; nothing for any
/// other text, for more than four places, and outside of what a new tool may cost.
std::optional<double> priceIn(QStringView text, DecimalSign sign);
