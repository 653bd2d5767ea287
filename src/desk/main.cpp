#include "common/StartUp.h"
#include "desk/DeskWindow.h"
#include "desk/Sounds.h"
#include "platform/gui/HelpKey.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/ScreenFit.h"
#include "platform/gui/UserAction.h"
#include "platform/system/SingleInstance.h"
#include "platform/system/UserSettings.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    QApplication::setApplicationName("Vorlane Desk");
    QApplication::setDesktopFileName("vorlane-desk");
    QApplication::setWindowIcon(Icons::icon("vorlane"));
    UserSettings::setFile(UserSettings::usualFile());
    const HelpKey helpKey({{"DeskWindow", "desk.html"}, {"PreviewWindow", "preview.html"}});
    const ScreenFit screenFit;
    const SingleInstance copy("vorlane-desk");
    if (!copy.acquired()) {
        msgBox({.text = "Vorlane Desk is running already.", .icon = QMessageBox::Critical});
        return EXIT_FAILURE;
    }
    Sounds sounds;
    std::unique_ptr<DeskWindow> desk;
    runUserAction([&] {
        const HourGlass busy;
        if (!ModMain::openCrib())
            return;
        desk = std::make_unique<DeskWindow>();
        desk->player = [&](Answer::Sound sound) { sounds.play(sound); };
        desk->show();
    });
    return desk ? QApplication::exec() : EXIT_FAILURE;
}
