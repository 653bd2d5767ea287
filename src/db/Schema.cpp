#include "db/Schema.h"

#include "db/Literals.h"

#include <QStringList>

namespace {

constexpr auto counter = "INTEGER PRIMARY KEY AUTOINCREMENT";
constexpr auto key = "NOT NULL PRIMARY KEY";
constexpr auto required = "NOT NULL";
constexpr auto zero = "NOT NULL DEFAULT 0";

struct Relation {
    const char *table;
    const char *column;
    const char *referenced;
};

constexpr Relation relations[] = {
    {"Tools", "Type", "Types"},
    {"Tools", "Location", "Locations"},
};

struct Index {
    const char *table;
    const char *columns;
};

constexpr Index indexes[] = {
    {"Types", "Parent, Description"},
    {"Locations", "Parent, Description"},
    {"Tools", "Type"},
    {"Tools", "Location"},
    {"Tools", "Out, Description"},
    {"CheckOutIn", "Tool_Id, Active"},
    {"Scrap", "LineItemTypeId, JobOrOH"},
    {"Scrap", "JobOrOH"},
};

struct ShippedReport {
    const char *module;
    const char *name;
    const char *fileName;
    const char *description;
    bool isDefault = false;
};

constexpr bool moduleDefault = true;

// The first six modules are those of the results windows, the last two are offered by the import dialog only.
constexpr ShippedReport shippedReports[] = {
    {"Tools CheckedOut", "Tools Checked Out", "ToolsCheckedOut.rpt", "Loans of each employee", moduleDefault},
    {"Tools CheckedOut", "Loan Sheet", "LoanSheet.rpt", "Loans of each employee on a page of its own, to be signed"},
    {"Tools CheckedOut", "Longest Out", "LongestOut.rpt", "Tools that are out, the longest first"},
    {"Tools CheckedOut", "Still Out by Employee", "StillOutByEmployee.rpt", "Tools that each employee still has"},
    {"Tools CheckedOut", "Still Out by Tool", "StillOutByTool.rpt", "Tools that are out, by description"},
    {"Tools Scrapped", "Tools Scrapped", "ToolsScrapped.rpt", "Scrapped tools by reason, with their price",
     moduleDefault},
    {"Junk Tools", "Junk Tools", "JunkTools.rpt", "Scrapped tools of each job", moduleDefault},
    {"Tools Type", "Tools by Type", "ToolsByType.rpt", "Tools of each type, with their price", moduleDefault},
    {"Tools Type", "Tool Labels", "ToolLabels.rpt", "A label with a bar code for each tool"},
    {"Tools Loc", "Tools by Location", "ToolsByLocation.rpt", "Tools of each location, with their price",
     moduleDefault},
    {"Tools Loc", "Count Sheet", "CountSheet.rpt", "Tools of each location, to be ticked off with a bar code reader"},
    {"Employee", "Employees", "Employees.rpt", "List of the employees", moduleDefault},
    {"Tools Out", "Tools Checked Out", "ToolsCheckedOut.rpt", "Loans of each employee", moduleDefault},
    {"All Tools", "Tools by Type", "ToolsByType.rpt", "Tools of each type, with their price", moduleDefault},
};

QString bracketed(const QString &name) { return '[' + name + ']'; }

QString createStatement(const Schema::Table &table)
{
    QStringList parts;
    for (const Schema::Column &column : table.columns)
        parts << QStringList{bracketed(column.name), column.type, column.rule}.join(' ').trimmed();
    for (const Relation &relation : relations) {
        if (qstrcmp(relation.table, table.name) == 0)
            parts << QString("FOREIGN KEY ([%1]) REFERENCES [%2] ([ID])").arg(relation.column, relation.referenced);
    }
    return "CREATE TABLE " + bracketed(table.name) + " (" + parts.join(", ") + ')';
}

QString createStatement(const Index &index)
{
    const QStringList columns = QString(index.columns).split(", ");
    return QString("CREATE INDEX [%1_%2] ON [%1] ([%3])").arg(index.table, columns.join('_'), columns.join("], ["));
}

}

const std::vector<Schema::Table> &Schema::tables()
{
    static const std::vector<Table> tables = {
        {"Types", {{"ID", counter}, {"Description", "TEXT", required}, {"Parent", "LONG", zero}}},
        {"Locations", {{"ID", counter}, {"Description", "TEXT", required}, {"Parent", "LONG", zero}}},
        {"Tools",
         {{"ID", counter},
          {"Type", "LONG", required},
          {"Location", "LONG", required},
          {"Manufacturer", "TEXT"},
          {"PartNumber", "TEXT"},
          {"Description", "TEXT", required},
          {"PricePer", "CURRENCY"},
          {"Out", "YESNO", zero}}},
        {"CheckOutIn",
         {{"ID", counter},
          {"Tool_Id", "LONG", required},
          {"Employee", "TEXT"},
          {"JobOrOH", "LONG"},
          {"LineItemTypeId", "LONG"},
          {"DateOut", "DATETIME"},
          {"DateIn", "DATETIME"},
          {"Active", "YESNO", zero},
          {"CheckOutDesc", "TEXT"},
          {"CheckOutPartNo", "TEXT"}}},
        {"Scrap",
         {{"ID", counter},
          {"ToolID", "LONG"},
          {"Type", "LONG"},
          {"TypeDescription", "TEXT"},
          {"Manufacturer", "TEXT"},
          {"PartNumber", "TEXT"},
          {"Description", "TEXT"},
          {"PricePer", "CURRENCY"},
          {"Location", "LONG"},
          {"Employee", "LONG"},
          {"ScrapDate", "DATETIME"},
          {"JobOrOH", "LONG"},
          {"LineItemTypeId", "LONG"},
          {"Reason", "LONG"},
          {"Notes", "TEXT"},
          {"Job", "LONG"},
          {"Date", "DATETIME"}}},
        {"ScrapReasons", {{"ID", counter}, {"Description", "TEXT", required}}},
        {"Reports",
         {{"Name", "TEXT", required},
          {"Description", "TEXT"},
          {"Module", "TEXT", required},
          {"FileName", "TEXT", required},
          {"Default", "YESNO", zero},
          {"oem", "YESNO", zero}}},
        {"JobVorlane", {{"ID", counter}, {"Jobno", "LONG"}}},
        {"Employee", {{"EmpID", "LONG", key}, {"LastName", "TEXT"}, {"FirstName", "TEXT"}, {"EmpStatus", "TEXT"}}},
        {"Job", {{"JobNo", "LONG", key}, {"Shipped", "YESNO", zero}}},
        {"Operation", {{"OperNo", "LONG", key}, {"Description", "TEXT"}, {"OperType", "TEXT"}}},
        {"LineItemType", {{"Index", "LONG", key}, {"Code", "TEXT"}}},
    };
    return tables;
}

const std::vector<Schema::ReportModule> &Schema::reportModules()
{
    static const std::vector<ReportModule> modules = {
        {"Tools CheckedOut", {"CheckOutIn", "Employee", "Operation"}},
        {"Tools Scrapped", {"Scrap", "Employee", "ScrapReasons", "Operation"}},
        {"Junk Tools", {"Scrap", "Job"}},
        {"Tools Type", {"Tools", "Types", "Locations"}},
        {"Tools Loc", {"Tools", "Types", "Locations"}},
        {"Employee", {"Employee"}},
        {"Tools Out", {}},
        {"All Tools", {}},
    };
    return modules;
}

void Schema::create(Database &database)
{
    Transaction transaction(database);
    for (const Table &table : tables())
        database.executeNative(createStatement(table));
    for (const Index &index : indexes)
        database.executeNative(createStatement(index));

    database.executeNative(QString("INSERT INTO sqlite_sequence VALUES ('Scrap', %1)").arg(firstScrapNumber - 1));
    database.executeNative(
        QString("INSERT INTO LineItemType VALUES (%1, 'Job'), (%2, 'Overhead')").arg(jobCharge).arg(overheadCharge));
    for (const ShippedReport &report : shippedReports) {
        const QStringList texts{quoted(report.name), quoted(report.description), quoted(report.module),
                                quoted(report.fileName)};
        database.executeNative(
            QString("INSERT INTO Reports VALUES (%1, %2, -1)").arg(texts.join(", ")).arg(report.isDefault ? -1 : 0));
    }
    transaction.commit();
}
