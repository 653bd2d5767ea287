#pragma once

#include <QUrl>

#include <functional>

/// The manual: HTML pages in the folder "manual" of the program, one a window.
namespace Manual {

/// Shows a page in the desktop's browser or, where there is none, in a window of the program. Says so when the page
/// is not there.
void show(const QString &page);

/// Opens a page and tells whether it could.
using Browser = std::function<bool(const QUrl &page)>;
/// Replaces the desktop's browser; an empty function brings it back.
void setBrowser(Browser browser);

}
