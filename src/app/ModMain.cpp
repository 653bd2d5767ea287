#include "app/ModMain.h"

#include "app/mdiMain.h"
#include "catalogue/SpareFolderList.h"
#include "common/ProgramState.h"
#include "db/Session.h"
#include "platform/engine/EngineError.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/system/ProgramFolder.h"
#include "platform/system/SingleInstance.h"

#include <QApplication>
#include <QDir>

namespace {

// The one error of the start that a newcomer meets; the engine's words do not tell him what to do.
bool openSession()
{
    try {
        Session::open();
        return true;
    } catch (const EngineError &error) {
        const QString folder = QDir::toNativeSeparators(ProgramFolder::path() + '/');
        if (error.number() != EngineError::fileNotFound || ProgramFolder::fileExists(folder + "dorvak.mdb"))
            throw;
        msgBox({.text = error.text(),
                .icon = QMessageBox::Critical,
                .detail = "The program's database must be this file:\n" + folder
                    + "dorvak.mdb\n\nPut it there, or make an empty one; in that folder type:\n"
                      "vorlane-admin create dorvak.mdb\n\nThe manual tells more, on the page\n"
                    + QDir::toNativeSeparators(ProgramFolder::find("manual/getting-started.html"))});
        return false;
    }
}

}

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
        if (!openSession())
            return;
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
