#include "admin/Command.h"
#include "admin/DatabaseCopy.h"
#include "admin/NewFile.h"
#include "admin/ProgressLine.h"
#include "platform/engine/Workspace.h"

namespace {

int backup(const QCommandLineParser &arguments, QTextStream &)
{
    const auto database = Workspace::first().openDatabase(arguments.positionalArguments().at(0));
    NewFile copy(arguments.positionalArguments().at(1));
    if (database->isRemote()) {
        const auto file = Workspace::first().createDatabase(copy.temporaryPath());
        Transaction transaction(*file);
        ProgressLine line;
        copyDatabase(*database, *file, [&line](const QString &step) { line.show(step); });
        transaction.commit();
    } else {
        database->backupTo(copy.temporaryPath());
    }
    copy.commit();
    return 0;
}

}

Command backupCommand()
{
    return {.name = "backup",
            .operands = {"FILE", "COPY"},
            .summary = "Copies a database, also while the program runs",
            .details =
                "The copy is a file, of a database on a server as well, and holds everything as it is at one moment.",
            .run = backup};
}
