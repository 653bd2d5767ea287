#include "app/ModMain.h"

#include "app/mdiMain.h"
#include "catalogue/SpareFolderList.h"
#include "common/StartUp.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/system/SingleInstance.h"

#include <QApplication>

int ModMain::Main()
{
    SpareFolderList::TypeListOpen = false;
    SpareFolderList::LocationListOpen = false;
    const SingleInstance copy("vorlane");
    if (!copy.acquired()) {
        msgBox(
            {.text = "You are already running Vorlane Manager... Check your Task-Bar!", .icon = QMessageBox::Critical});
        return EXIT_FAILURE;
    }
    bool started = false;
    runUserAction([&] {
        const HourGlass busy;
        if (!openCrib())
            return;
        mdiMain &frame = mdiMain::instance();
        frame.Load();
        frame.show();
        started = true;
    });
    const int status = started ? QApplication::exec() : EXIT_FAILURE;
    mdiMain::unload();
    return status;
}
