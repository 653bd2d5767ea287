#include "app/ModMain.h"

#include "app/mdiMain.h"
#include "common/ProgramState.h"
#include "db/Session.h"
#include "platform/gui/Handler.h"
#include "platform/gui/MsgBox.h"
#include "platform/system/ProgramFolder.h"
#include "platform/system/SingleInstance.h"

#include <QApplication>

int ModMain::Main()
{
    ProgramState::TypeListOpen = false;
    ProgramState::LocationListOpen = false;
    const SingleInstance copy("vorlane");
    if (!copy.acquired()) {
        msgBox(
            {.text = "You are already running Vorlane Manager... Check your Task-Bar!", .icon = QMessageBox::Critical});
        return EXIT_FAILURE;
    }
    bool started = false;
    runUserAction([&] {
        const HourGlass busy;
        Session::open();
        ProgramState::SuiteInstalled = ProgramFolder::fileExists(ProgramFolder::path() + "\\Dorvak.exe");
        mdiMain &frame = mdiMain::instance();
        frame.Load();
        frame.show();
        started = true;
    });
    const int status = started ? QApplication::exec() : EXIT_FAILURE;
    mdiMain::unload();
    return status;
}
