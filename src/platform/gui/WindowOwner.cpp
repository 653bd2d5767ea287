#include "platform/gui/WindowOwner.h"

#include <QApplication>
#include <QMainWindow>

QWidget *windowOwner()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->isVisible() && qobject_cast<QMainWindow *>(window))
            return window;
    return nullptr;
}
