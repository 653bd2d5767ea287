#include "app/HelpPages.h"
#include "app/ModMain.h"
#include "platform/gui/HelpKey.h"
#include "platform/gui/Icons.h"
#include "platform/gui/ScreenFit.h"
#include "platform/reportcontrol/Printing.h"
#include "platform/reportengine/UsualPaper.h"
#include "platform/system/UserSettings.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    QApplication::setApplicationName("Vorlane Manager");
    QApplication::setDesktopFileName("vorlane");
    QApplication::setWindowIcon(Icons::icon("vorlane"));
    UserSettings::setFile(UserSettings::usualFile());
    UsualPaper::ask(paperOfPrinter);
    const HelpKey helpKey(helpPages());
    const ScreenFit screenFit;
    return ModMain::Main();
}
