#include "platform/gui/ScreenFit.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

namespace {

// The frame is the window manager's. Until it has put one around the window, that of another window is the best guess.
QMargins frameOf(const QWidget *window)
{
    const QWindow *handle = window->windowHandle();
    if (handle && !handle->frameMargins().isNull())
        return handle->frameMargins();
    const QWindowList others = QGuiApplication::topLevelWindows();
    for (const QWindow *other : others)
        if (other->isVisible() && !other->frameMargins().isNull())
            return other->frameMargins();
    const int title = window->style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int edge = window->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {edge, title, edge, edge};
}

constexpr const char *placeIsDue = "placeIsDue";

// All but the row of buttons at the bottom is scrolled.
void makeScrollable(QWidget *window)
{
    QLayout *old = window->layout();
    QLayoutItem *last = qobject_cast<QVBoxLayout *>(old) ? old->itemAt(old->count() - 1) : nullptr;
    QLayout *buttons = last ? last->layout() : nullptr;
    if (buttons)
        old->takeAt(old->count() - 1);
    // Within the window from the first, so that the tab order stays.
    auto *area = new QScrollArea(window);
    auto *contents = new QWidget(area);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(contents);
    contents->setLayout(old);
    old->setContentsMargins({});
    auto *whole = new QVBoxLayout(window);
    whole->addWidget(area);
    if (buttons)
        whole->addLayout(buttons);
    window->setMinimumSize(0, 0);
}

void fit(QWidget *window, bool placeToo)
{
    if (window->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    const QRect room = ScreenFit::roomFor(window);
    QRect place = window->geometry();
    const QSize least = window->minimumSizeHint();
    const bool tooLarge = least.width() > room.width() || least.height() > room.height();
    if (tooLarge && window->layout() && qobject_cast<QDialog *>(window) && !qobject_cast<QMessageBox *>(window)) {
        // A scroll bar takes its place beside the contents.
        const int bar = window->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        place.setSize(place.size().expandedTo(least) + QSize(bar, bar));
        makeScrollable(window);
    }
    place.setSize(place.size().boundedTo(room.size()));
    if (place.size() != window->size())
        window->resize(place.size());
    if (!placeToo)
        return;
    place.moveLeft(qBound(room.left(), place.left(), room.right() + 1 - place.width()));
    place.moveTop(qBound(room.top(), place.top(), room.bottom() + 1 - place.height()));
    if (place != window->geometry())
        window->setGeometry(place);
}

}

QRect ScreenFit::roomFor(const QWidget *window)
{
    return window->screen()->availableGeometry().marginsRemoved(frameOf(window));
}

ScreenFit::ScreenFit() { QCoreApplication::instance()->installEventFilter(this); }

bool ScreenFit::eventFilter(QObject *watched, QEvent *event)
{
    const bool isShown = event->type() == QEvent::Show;
    if (!isShown && event->type() != QEvent::WindowActivate)
        return false;
    auto *window = qobject_cast<QWidget *>(watched);
    if (!window || (window->windowType() != Qt::Window && window->windowType() != Qt::Dialog))
        return false;
    // Before it is shown a window gets its size; when it is active for the first time it has its frame and its place.
    // Later its place is the user's.
    if (isShown || window->property(placeIsDue).toBool()) {
        window->setProperty(placeIsDue, isShown);
        // A window that was put nowhere yet gets its place from the desktop, a dialog over its owner.
        fit(window, !isShown || window->testAttribute(Qt::WA_Moved));
    }
    return false;
}
