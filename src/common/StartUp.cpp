#include "common/StartUp.h"

#include "common/ProgramState.h"
#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/system/ProgramFolder.h"

#include <QDir>

// The one error of the start that a newcomer meets; the engine's words do not tell him what to do.
bool ModMain::openCrib()
{
    try {
        Session::open();
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
    ProgramState::SuiteInstalled = ProgramFolder::fileExists(ProgramFolder::path() + "\\Dorvak.exe");
    return true;
}
