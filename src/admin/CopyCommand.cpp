#include "admin/Command.h"
#include "admin/DatabaseCopy.h"
#include "admin/NewDatabase.h"
#include "admin/ProgressLine.h"
#include "platform/engine/Workspace.h"

namespace {

int copy(const QCommandLineParser &arguments, QTextStream &out)
{
    const auto from = Workspace::first().openDatabase(arguments.positionalArguments().at(0));
    NewDatabase to(arguments.positionalArguments().at(1));
    std::vector<CopiedTable> tables;
    {
        ProgressLine line;
        tables = copyDatabase(*from, *to, [&line](const QString &step) { line.show(step); });
    }
    to.commit();
    for (const CopiedTable &table : tables)
        out << table.name << ": " << table.rows << " rows\n";
    return 0;
}

}

Command copyCommand()
{
    const QString details =
        "FROM and TO are files or connection files: TO is a new file, or names an empty database on a server. All is\n"
        "copied or nothing. Attendants keep away meanwhile: what they store later is not in the copy.";
    return {.name = "copy",
            .operands = {"FROM", "TO"},
            .summary = "Moves a database to a server, or back into a file",
            .details = details,
            .run = copy};
}
