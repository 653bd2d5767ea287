#pragma once

#include <QString>

namespace MainSubs {

/// Whether a tool may be stored with these data; if not, says what is wrong.
bool ValidData(const QString &location, const QString &type, const QString &manufacturer, const QString &description);

}
