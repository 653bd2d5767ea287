#include "admin/Command.h"
#include "admin/NewFile.h"
#include "db/Schema.h"
#include "platform/engine/Workspace.h"

namespace {

int create(const QCommandLineParser &arguments, QTextStream &)
{
    NewFile file(arguments.positionalArguments().constFirst());
    Schema::create(*Workspace::first().createDatabase(file.temporaryPath()));
    file.commit();
    return 0;
}

}

Command createCommand()
{
    return {.name = "create",
            .operands = {"FILE"},
            .summary = "Makes an empty database",
            .details = "It holds the two kinds of charge and the shipped report templates.",
            .run = create};
}
