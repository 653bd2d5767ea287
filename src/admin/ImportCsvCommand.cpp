#include "admin/Command.h"
#include "admin/CsvPlan.h"
#include "admin/ImportStatus.h"
#include "admin/ProgressLine.h"
#include "admin/Refusal.h"
#include "platform/engine/Workspace.h"

#include <algorithm>

namespace {

QString inQuotes(const QString &file) { return '\'' + file + "' "; }

QStringList kindNames()
{
    QStringList names;
    for (const CsvKind &kind : CsvKind::all())
        names << kind.name;
    return names;
}

const CsvKind &kindCalled(const QString &name)
{
    const auto found = std::ranges::find(CsvKind::all(), name, &CsvKind::name);
    if (found == CsvKind::all().end())
        throw UsageError("Nothing can be imported into '" + name + "'; there are " + kindNames().join(", ") + '.');
    return *found;
}

std::optional<DecimalSign> decimalSign(const QString &name)
{
    if (name.isEmpty())
        return {};
    if (name != "point" && name != "comma")
        throw UsageError("There is no decimal '" + name + "'.");
    return name == "point" ? DecimalSign::Point : DecimalSign::Comma;
}

CsvPlan imported(const CsvSheet &sheet, const CsvKind &kind, CsvFaults &faults, const QString &file, bool isDry)
{
    const auto database = Workspace::first().openDatabase(file);
    std::optional<Transaction> change;
    std::optional<ReadScope> look;
    if (isDry)
        look.emplace(*database);
    else
        change.emplace(*database);
    CsvPlan plan(kind, database.get());
    plan.take(sheet, faults);
    if (faults.count() > 0)
        throw Refusal(
            ImportStatus::Content,
            QString("was not imported. Faults: %1\n  %2").arg(faults.count()).arg(faults.list().join("\n  ")));
    if (change) {
        plan.store(*database);
        database->analyze();
        change->commit();
    }
    return plan;
}

int importCsv(const QCommandLineParser &arguments, QTextStream &out)
{
    const QString file = arguments.positionalArguments().at(0), database = arguments.positionalArguments().at(1);
    const CsvKind &kind = kindCalled(arguments.value("into"));
    const bool isDry = arguments.isSet("dry-run");
    CsvFaults faults;
    QStringList notes;
    try {
        ProgressLine line;
        const CsvSheet sheet(file, kind, decimalSign(arguments.value("decimal")), faults,
                             [&](int percent) { line.show(QString("Reading: %1 %").arg(percent)); });
        const CsvPlan plan = imported(sheet, kind, faults, database, isDry);
        if (isDry)
            out << "Nothing was written; without --dry-run there would be:\n";
        out << plan.report().join('\n') << '\n';
        notes = sheet.notes() + plan.notes();
    } catch (const Refusal &refusal) {
        throw Refusal(refusal.status(), inQuotes(file) + refusal.sentence());
    } catch (const EngineError &error) {
        throw Refusal(ImportStatus::CannotWrite, inQuotes(database) + "was not changed: " + error.text());
    }
    if (notes.isEmpty())
        return ImportStatus::Imported;
    out << "Notes:\n  " << notes.join("\n  ") << '\n';
    return ImportStatus::WithNotes;
}

}

Command importCsvCommand()
{
    const QCommandLineOption into("into", "What the rows are", kindNames().join('|'));
    const QCommandLineOption decimal("decimal", "What stands before the decimals, where prices cannot tell",
                                     "point|comma");
    const QCommandLineOption dryRun("dry-run", "Looks and tells, and writes nothing");
    QString details = "The first line has the headings, in any order:\n";
    for (const CsvKind &kind : CsvKind::all()) {
        QStringList headings;
        for (const CsvColumn &column : kind.columns)
            headings << (column.isRequired ? column.heading : '[' + column.heading + ']');
        details += "  " + kind.name.leftJustified(11) + headings.join(", ") + '\n';
    }
    details += "A folder is a path such as Cutting tools\\Drills, and is made where it is missing. All rows are stored "
               "or none.\nThe exit status is 0, or 1 with notes; 2 for wrong usage, 3 when FILE cannot be read, 5 when "
               "something in it\ndoes not fit, 6 when DATABASE cannot be written.";
    return {.name = "import-csv",
            .operands = {"FILE", "DATABASE"},
            .options = {into, decimal, dryRun},
            .summary = "Brings rows from a spreadsheet (CSV) into a crib",
            .details = details,
            .run = importCsv,
            .required = {"into"}};
}
