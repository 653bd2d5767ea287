#include "admin/Command.h"
#include "platform/engine/Workspace.h"

namespace {

int upgrade(const QCommandLineParser &arguments, QTextStream &out)
{
    const auto database = Workspace::first().openOfAnyVersion(arguments.positionalArguments().constFirst());
    if (!database->isRemote()) {
        out << "There is nothing to do: a file serves any version of the program.\n";
        return 0;
    }
    database->upgrade();
    out << "The database serves this version of the program.\n";
    return 0;
}

}

Command upgradeCommand()
{
    return {.name = "upgrade",
            .operands = {"FILE"},
            .summary = "Makes a database on a server serve this version",
            .details = "It renews the functions there that statements call, and the indexes that rest on them.",
            .run = upgrade};
}
