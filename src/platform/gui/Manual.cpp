#include "platform/gui/Manual.h"

#include "platform/gui/MsgBox.h"
#include "platform/gui/frmManual.h"
#include "platform/system/ProgramFolder.h"

#include <QDesktopServices>
#include <QProcess>

#include <utility>

namespace {

// The desktop says yes as soon as its opener runs, also where that then finds no browser.
bool openInDesktopBrowser(const QUrl &page)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    constexpr int patience = 3000; // milliseconds
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {"query", "default", "text/html"}, QIODevice::ReadOnly);
    if (!query.waitForFinished(patience) || query.readAllStandardOutput().trimmed().isEmpty())
        return false;
#endif
    return QDesktopServices::openUrl(page);
}

Manual::Browser openInBrowser = openInDesktopBrowser;

}

void Manual::show(const QString &page)
{
    const QString file = ProgramFolder::find("manual/" + page);
    if (!ProgramFolder::fileExists(file)) {
        inform("The manual is missing: there is no file '" + file
               + "'. Put the folder \"manual\" of the program back beside it.");
        return;
    }
    const QUrl url = QUrl::fromLocalFile(file);
    if (!openInBrowser(url))
        frmManual::instance().showPage(url);
}

void Manual::setBrowser(Browser browser) { openInBrowser = browser ? std::move(browser) : openInDesktopBrowser; }
