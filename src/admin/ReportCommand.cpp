#include "admin/Command.h"
#include "platform/engine/Workspace.h"
#include "platform/reportengine/Report.h"
#include "platform/system/ProgramFolder.h"

namespace {

int report(const QCommandLineParser &arguments, QTextStream &out)
{
    const QStringList operands = arguments.positionalArguments();
    const QString file = ProgramFolder::toNative(operands.at(3));
    if (!file.endsWith(".pdf", Qt::CaseInsensitive) && !file.endsWith(".csv", Qt::CaseInsensitive))
        throw UsageError("'" + operands.at(3) + "' ends neither in .pdf nor in .csv.");

    const auto database = Workspace::first().openDatabase(operands.at(0));
    Report report(database.get());
    const auto check = [&report](int resultCode) {
        if (resultCode != ResultCode::ok)
            throw ReportError(resultCode, report.lastDetail());
    };
    check(report.open(operands.at(1), operands.at(2)));
    check(report.write(file, false));
    out << report.recordCount() << " records\n";
    return 0;
}

}

Command reportCommand()
{
    return {.name = "report",
            .operands = {"FILE", "TEMPLATE", "FORMULA", "OUT.pdf|OUT.csv"},
            .summary = "Prints a report template into a new file",
            .details =
                "TEMPLATE is the name of a file in the crib folder, which the variable VORLANE_CRIB names, or of\n"
                "one that comes with the program. FORMULA picks the records:\n"
                "\"{Tools.Description} = 'Drill'\", or \"\" for all of them.",
            .run = report,
            .needsFonts = true};
}
