#include "platform/gui/WindowOwner.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>

QWidget *windowOwner()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    // A dialog that was just closed is the active window until the window system has said otherwise.
    if (QWidget *active = QApplication::activeWindow(); active && active->isVisible())
        return active;
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
    if (owner)
        owner->activateWindow();
    return result;
}
