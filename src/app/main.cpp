#include "app/ModMain.h"
#include "platform/gui/Icons.h"
#include "platform/gui/Manual.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    QApplication::setApplicationName("Vorlane Manager");
    QApplication::setDesktopFileName("vorlane");
    QApplication::setWindowIcon(Icons::icon("vorlane"));
    const HelpKey helpKey;
    return ModMain::Main();
}
