#include "db/Schema.h"

#include "db/Literals.h"
#include "db/ShippedReports.h"

namespace {

using Column = TableDefinition::Column;
using enum TableDefinition::Rule;
using dialect::ValueKind;

Column counter(const char *name) { return {name, ValueKind::Long, Counter}; }

Column number(const char *name, TableDefinition::Rule rule = Optional) { return {name, ValueKind::Long, rule}; }

Column text(const char *name, TableDefinition::Rule rule = Optional) { return {name, ValueKind::Text, rule}; }

Column money(const char *name) { return {name, ValueKind::Currency}; }

Column dateTime(const char *name) { return {name, ValueKind::Date}; }

Column yesNo(const char *name) { return {name, ValueKind::YesNo, Zero}; }

}

const std::vector<TableDefinition> &Schema::tables()
{
    static const std::vector<TableDefinition> tables = {
        {.name = "Types",
         .columns = {counter("ID"), text("Description", Required), number("Parent", Zero)},
         .indexes = {{"Parent", "Description"}},
         .parent = "Parent"},
        {.name = "Locations",
         .columns = {counter("ID"), text("Description", Required), number("Parent", Zero)},
         .indexes = {{"Parent", "Description"}},
         .parent = "Parent"},
        {.name = "Tools",
         .columns = {counter("ID"), number("Type", Required), number("Location", Required), text("Manufacturer"),
                     text("PartNumber"), text("Description", Required), money("PricePer"), yesNo("Out")},
         .foreignKeys = {{"Type", "Types", "ID"}, {"Location", "Locations", "ID"}},
         .indexes = {{"Type"}, {"Location"}, {"Out", "Description"}}},
        {.name = "CheckOutIn",
         .columns = {counter("ID"), number("Tool_Id", Required), text("Employee"), number("JobOrOH"),
                     number("LineItemTypeId"), dateTime("DateOut"), dateTime("DateIn"), yesNo("Active"),
                     text("CheckOutDesc"), text("CheckOutPartNo")},
         .indexes = {{"Tool_Id", "Active"}},
         .uniques = {{.column = "Tool_Id", .where = "Active"}}},
        {.name = "Scrap",
         .columns = {counter("ID"), number("ToolID"), number("Type"), text("TypeDescription"), text("Manufacturer"),
                     text("PartNumber"), text("Description"), money("PricePer"), number("Location"), number("Employee"),
                     dateTime("ScrapDate"), number("JobOrOH"), number("LineItemTypeId"), number("Reason"),
                     text("Notes"), number("Job"), dateTime("Date")},
         .indexes = {{"LineItemTypeId", "JobOrOH"}, {"JobOrOH"}},
         .firstNumber = firstScrapNumber,
         // Years later the suite may give the number to another tool, which is scrapped in its turn.
         .uniques = {{.column = "ToolID", .day = "ScrapDate"}}},
        {.name = "ScrapReasons", .columns = {counter("ID"), text("Description", Required)}},
        {.name = "Reports",
         .columns = {text("Name", Required), text("Description"), text("Module", Required), text("FileName", Required),
                     yesNo("Default"), yesNo("oem")}},
        {.name = "JobVorlane", .columns = {counter("ID"), number("Jobno")}},
        {.name = "Employee", .columns = {number("EmpID", Key), text("LastName"), text("FirstName"), text("EmpStatus")}},
        {.name = "Job", .columns = {number("JobNo", Key), yesNo("Shipped")}},
        {.name = "Operation", .columns = {number("OperNo", Key), text("Description"), text("OperType")}},
        {.name = "LineItemType", .columns = {number("Index", Key), text("Code")}},
    };
    return tables;
}

void Schema::create(Database &database)
{
    Transaction transaction(database);
    fill(database);
    transaction.commit();
}

void Schema::fill(Database &database)
{
    for (const TableDefinition &table : tables())
        database.createTable(table);
    for (const auto &[number, code] : {std::pair(jobCharge, "Job"), std::pair(overheadCharge, "Overhead")})
        database.execute(QString("INSERT INTO LineItemType VALUES (%1, %2)").arg(number).arg(quoted(code)));
    for (const ReportModule &module : reportModules()) {
        for (const ShippedReport &report : module.reports) {
            const bool isDefault = &report == &module.reports.front();
            const QStringList texts{quoted(report.name), quoted(report.description), quoted(module.name),
                                    quoted(report.fileName)};
            database.execute(
                QString("INSERT INTO Reports VALUES (%1, %2, -1)").arg(texts.join(", ")).arg(isDefault ? -1 : 0));
        }
    }
}

void Schema::admitAttendants(Database &database)
{
    const QStringList suites{"Employee", "Job", "Operation", "LineItemType"};
    QStringList own;
    for (const TableDefinition &table : tables())
        if (!suites.contains(table.name))
            own.append(table.name);
    database.admitAttendants(own, suites);
}
