#include "platform/gui/HelpKey.h"

#include "platform/gui/Manual.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/frmManual.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

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
    return QStringLiteral("index.html");
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
