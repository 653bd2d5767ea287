#include "admin/Command.h"
#include "db/Literals.h"
#include "db/Schema.h"
#include "db/ShippedReports.h"
#include "platform/engine/Workspace.h"
#include "platform/reportengine/DataSource.h"
#include "platform/reportengine/TemplateReader.h"
#include "platform/system/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

QString moduleNames()
{
    QStringList names;
    for (const Schema::ReportModule &module : Schema::reportModules())
        names << '\'' + QString(module.name) + '\'';
    return names.join(", ");
}

const Schema::ReportModule &moduleCalled(const QString &name)
{
    for (const Schema::ReportModule &module : Schema::reportModules())
        if (name == module.name)
            return module;
    throw UsageError("There is no module '" + name + "'; the modules are " + moduleNames() + '.');
}

/// A template without a fault, held against the database.
Template checkedTemplate(Database &database, const QString &file)
{
    Template report = TemplateReader::readFile(file);
    report.requireParameters({{"title", {}}, {"selection", {}}});
    Formula all;
    const DataSource checked(database, report, all);
    return report;
}

void requireTables(const Template &report, const Schema::ReportModule &module)
{
    QStringList missing;
    for (const QString table : module.tables) {
        const auto isIt = [&](const Join &join) { return join.table.compare(table, Qt::CaseInsensitive) == 0; };
        if (report.table.compare(table, Qt::CaseInsensitive) != 0 && std::ranges::none_of(report.joins, isIt))
            missing << table;
    }
    if (!missing.isEmpty())
        throw ReportError(ResultCode::invalidFieldName,
                          QString("the queries of '%1' ask for %2, which the template does not join")
                              .arg(module.name, missing.join(" and ")));
}

/// Nothing is entered that the program would not find when it prints.
void requireInProgramFolder(const QFileInfo &file)
{
    if (QFileInfo(ProgramFolder::find(file.fileName())).canonicalFilePath() != file.canonicalFilePath())
        throw ReportError(
            ResultCode::reportNotFound,
            QString("%1 has no fault, but lies where the program does not look; copy it to %2 and enter it "
                    "there")
                .arg(file.filePath(), ProgramFolder::path()));
}

int enterTemplate(const QCommandLineParser &arguments, QTextStream &out)
{
    const Schema::ReportModule &module = moduleCalled(arguments.value("module"));
    const auto database = Workspace::first().openDatabase(arguments.positionalArguments().at(1));
    // As for the other commands that take a template, a bare name is that of a file in the crib folder or beside the
    // program.
    const QString named = ProgramFolder::toNative(arguments.positionalArguments().at(0));
    const QFileInfo file(named.contains(QDir::separator()) ? named : ProgramFolder::find(named));
    const Template report = checkedTemplate(*database, file.filePath());
    requireTables(report, module);
    requireInProgramFolder(file);

    const QString inModule = " WHERE Module = " + quoted(module.name);
    const QString thisFile = inModule + " AND FileName = " + quoted(file.fileName());
    Transaction transaction(*database);
    const Recordset known = database->openRecordset("SELECT Name FROM Reports" + thisFile);
    // Reports are found by their names, which stand between apostrophes then.
    const QString name = known.isEmpty()
        ? QString(report.title.isEmpty() ? file.completeBaseName() : report.title).remove('\'')
        : known.text(u"Name");
    if (!known.isEmpty()) {
        out << "The module '" << module.name << "' offers " << file.fileName() << " already, as \"" << name << "\".\n";
    } else {
        if (!database->openRecordset("SELECT Name FROM Reports" + inModule + " AND Name = " + quoted(name)).isEmpty())
            throw ReportError(ResultCode::fileExists,
                              QString("the module '%1' has another report \"%2\"; give the template another title")
                                  .arg(module.name, name));
        database->execute(QString("INSERT INTO Reports (Name, Description, Module, FileName, [Default], oem) "
                                  "VALUES (%1, %1, %2, %3, False, False)")
                              .arg(quoted(name), quoted(module.name), quoted(file.fileName())));
        out << "The module '" << module.name << "' offers " << file.fileName() << " now, as \"" << name << "\".\n";
    }
    if (arguments.isSet("default")) {
        database->execute("UPDATE Reports SET [Default] = False" + inModule);
        database->execute("UPDATE Reports SET [Default] = True" + thisFile);
        out << "It is the default.\n";
    }
    transaction.commit();
    return 0;
}

}

Command templateCommand()
{
    const QCommandLineOption module("module", "For whose results it is offered: " + moduleNames(), "NAME");
    const QCommandLineOption isDefault("default", "Makes it the one that is chosen at first");
    const QString details =
        "FILE lies in the crib folder, which the variable VORLANE_CRIB names, or beside the program: there it is "
        "looked\n"
        "for when it is printed. Nothing is entered when it has a fault; the line is named. Its title becomes the\n"
        "report's name.";
    return {.name = "template",
            .operands = {"FILE", "DATABASE"},
            .options = {module, isDefault},
            .summary = "Checks a report template and offers it in a results window",
            .details = details,
            .run = enterTemplate,
            .required = {"module"}};
}
