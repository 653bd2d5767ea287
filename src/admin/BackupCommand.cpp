#include "admin/Command.h"
#include "admin/NewFile.h"
#include "platform/engine/Workspace.h"

namespace {

int backup(const QCommandLineParser &arguments, QTextStream &)
{
    const auto database = Workspace::first().openDatabase(arguments.positionalArguments().at(0));
    NewFile copy(arguments.positionalArguments().at(1));
    database->backupTo(copy.temporaryPath());
    copy.commit();
    return 0;
}

}

Command backupCommand()
{
    return {.name = "backup",
            .operands = {"FILE", "COPY"},
            .summary = "Copies a database, also while the program runs",
            .details = "The copy is the file as it stands between two transactions.",
            .run = backup};
}
