#include "platform/gui/Manual.h"

#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/frmManual.h"
#include "platform/system/ProgramFolder.h"

#include <QDesktopServices>
#include <QKeyEvent>
#include <QProcess>

#include <utility>

namespace {

const auto indexPage = QStringLiteral("index.html");

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
    const QString file = ProgramFolder::path() + "/manual/" + page;
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

HelpKey::HelpKey(std::vector<HelpPage> pages) : m_pages(std::move(pages))
{
    QCoreApplication::instance()->installEventFilter(this);
}

HelpKey::~HelpKey() { frmManual::unload(); }

QString HelpKey::pageFor(const QWidget *widget) const
{
    while (widget) {
        const auto found = std::find_if(m_pages.begin(), m_pages.end(),
                                        [&](const HelpPage &row) { return widget->objectName() == row.window; });
        if (found != m_pages.end())
            return found->page;
        // The choices that drop down while one types have no parent; they hand their focus to the box they belong to.
        const QWidget *around = widget->parentWidget() ? widget->parentWidget() : widget->focusProxy();
        // In the window that a menu or a box came from, the control that was last used leads to the child window.
        if (around && widget->isWindow() && around->window()->focusWidget())
            around = around->window()->focusWidget();
        widget = around;
    }
    return indexPage;
}

bool HelpKey::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()
        || !static_cast<QKeyEvent *>(event)->matches(QKeySequence::HelpContents))
        return false;
    runUserAction([&] {
        const QString page = pageFor(static_cast<QWidget *>(watched));
        // An open menu would keep the mouse to itself.
        while (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        Manual::show(page);
    });
    return true;
}
