#include "platform/gui/WindowOwner.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QPointer>

namespace {
QPointer<QWidget> handedBackTo; ///< the window below the last dialog
}

QWidget *windowOwner()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    // A dialog that was just closed is the active window until the window system has said otherwise.
    if (QWidget *active = QApplication::activeWindow(); active && active->isVisible())
        return active;
    // Nor does it say at once that the window below has the keyboard again.
    if (handedBackTo && handedBackTo->isVisible())
        return handedBackTo;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->isVisible() && qobject_cast<QMainWindow *>(window))
            return window;
    return nullptr;
}

int execOver(QDialog &dialog)
{
    QWidget *owner = dialog.parentWidget();
    const int result = dialog.exec();
    handedBackTo = owner;
    if (owner)
        owner->activateWindow();
    return result;
}
