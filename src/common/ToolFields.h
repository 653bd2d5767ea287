#pragma once

#include <QString>

/// What the fields of a tool may hold, in characters.
namespace ToolFields {

/// Names from elsewhere are stored up to here: a restored tool keeps what it was scrapped with.
inline constexpr int longestManufacturer = 255;

}

namespace MainSubs {

/// Whether a tool may be stored with these data; if not, says what is wrong.
bool ValidData(const QString &location, const QString &type, const QString &manufacturer, const QString &description);

}
