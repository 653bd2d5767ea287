#include "db/Schema.h"

#include "db/Literals.h"
#include "db/ShippedReports.h"

#include <QStringList>

namespace {

constexpr auto key = "NOT NULL PRIMARY KEY";
constexpr auto required = "NOT NULL";
constexpr auto zero = "NOT NULL DEFAULT 0";

using Schema::Column;

Column counter(const char *name) { return {name, "INTEGER PRIMARY KEY AUTOINCREMENT"}; }

Column number(const char *name, const char *rule = "") { return {name, "LONG", rule}; }

Column text(const char *name, const char *rule = "") { return {name, "TEXT", rule}; }

Column money(const char *name) { return {name, "CURRENCY"}; }

Column dateTime(const char *name) { return {name, "DATETIME"}; }

Column yesNo(const char *name) { return {name, "YESNO", zero}; }

struct Relation {
    const char *table;
    const char *column;
    const char *referenced;
};

constexpr Relation relations[] = {
    {.table = "Tools", .column = "Type", .referenced = "Types"},
    {.table = "Tools", .column = "Location", .referenced = "Locations"},
};

struct Index {
    const char *table;
    const char *columns;
};

constexpr Index indexes[] = {
    {.table = "Types", .columns = "Parent, Description"},
    {.table = "Locations", .columns = "Parent, Description"},
    {.table = "Tools", .columns = "Type"},
    {.table = "Tools", .columns = "Location"},
    {.table = "Tools", .columns = "Out, Description"},
    {.table = "CheckOutIn", .columns = "Tool_Id, Active"},
    {.table = "Scrap", .columns = "LineItemTypeId, JobOrOH"},
    {.table = "Scrap", .columns = "JobOrOH"},
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
        {.name = "Types", .columns = {counter("ID"), text("Description", required), number("Parent", zero)}},
        {.name = "Locations", .columns = {counter("ID"), text("Description", required), number("Parent", zero)}},
        {.name = "Tools",
         .columns = {counter("ID"), number("Type", required), number("Location", required), text("Manufacturer"),
                     text("PartNumber"), text("Description", required), money("PricePer"), yesNo("Out")}},
        {.name = "CheckOutIn",
         .columns = {counter("ID"), number("Tool_Id", required), text("Employee"), number("JobOrOH"),
                     number("LineItemTypeId"), dateTime("DateOut"), dateTime("DateIn"), yesNo("Active"),
                     text("CheckOutDesc"), text("CheckOutPartNo")}},
        {.name = "Scrap",
         .columns = {counter("ID"), number("ToolID"), number("Type"), text("TypeDescription"), text("Manufacturer"),
                     text("PartNumber"), text("Description"), money("PricePer"), number("Location"), number("Employee"),
                     dateTime("ScrapDate"), number("JobOrOH"), number("LineItemTypeId"), number("Reason"),
                     text("Notes"), number("Job"), dateTime("Date")}},
        {.name = "ScrapReasons", .columns = {counter("ID"), text("Description", required)}},
        {.name = "Reports",
         .columns = {text("Name", required), text("Description"), text("Module", required), text("FileName", required),
                     yesNo("Default"), yesNo("oem")}},
        {.name = "JobVorlane", .columns = {counter("ID"), number("Jobno")}},
        {.name = "Employee", .columns = {number("EmpID", key), text("LastName"), text("FirstName"), text("EmpStatus")}},
        {.name = "Job", .columns = {number("JobNo", key), yesNo("Shipped")}},
        {.name = "Operation", .columns = {number("OperNo", key), text("Description"), text("OperType")}},
        {.name = "LineItemType", .columns = {number("Index", key), text("Code")}},
    };
    return tables;
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
    for (const ReportModule &module : reportModules()) {
        for (const ShippedReport &report : module.reports) {
            const bool isDefault = &report == &module.reports.front();
            const QStringList texts{quoted(report.name), quoted(report.description), quoted(module.name),
                                    quoted(report.fileName)};
            database.executeNative(
                QString("INSERT INTO Reports VALUES (%1, %2, -1)").arg(texts.join(", ")).arg(isDefault ? -1 : 0));
        }
    }
    transaction.commit();
}
