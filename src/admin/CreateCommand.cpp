#include "admin/Command.h"
#include "admin/NewDatabase.h"
#include "db/Schema.h"

namespace {

int create(const QCommandLineParser &arguments, QTextStream &)
{
    NewDatabase database(arguments.positionalArguments().constFirst());
    Schema::fill(*database);
    database.commit();
    return 0;
}

}

Command createCommand()
{
    return {.name = "create",
            .operands = {"FILE"},
            .summary = "Makes an empty database",
            .details =
                "It holds the two kinds of charge and the shipped report templates. FILE is new, or a connection file\n"
                "that names an empty database on a server.",
            .run = create};
}
