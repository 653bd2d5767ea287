#include "db/ShippedReports.h"

namespace {

/// What each list of tools offers, behind what is its own.
std::vector<Schema::ShippedReport> withThoseOfTools(std::vector<Schema::ShippedReport> reports)
{
    reports.insert(
        reports.end(),
        {{.name = "Tool Labels", .fileName = "ToolLabels.rpt", .description = "A label with a bar code for each tool"},
         {.name = "Tool Labels 62 mm",
          .fileName = "ToolLabels62mm.rpt",
          .description = "The same for a label printer with a roll of 62 mm"},
         {.name = "Tool Labels 29 mm",
          .fileName = "ToolLabels29mm.rpt",
          .description = "The same for a label printer with a roll of 29 mm"},
         {.name = "Value of the Stock",
          .fileName = "StockValue.rpt",
          .description = "What the tools of each location are worth"},
         {.name = "Last Lent",
          .fileName = "LastLent.rpt",
          .description = "When tools were last lent, those never lent first"}});
    return reports;
}

}

const std::vector<Schema::ReportModule> &Schema::reportModules()
{
    // The first six modules are those of the results windows, the last two are offered by the import dialog only.
    static const std::vector<ReportModule> modules = {
        {.name = "Tools CheckedOut",
         .tables = {"CheckOutIn", "Employee", "Operation"},
         .reports = {{.name = "Tools Checked Out",
                      .fileName = "ToolsCheckedOut.rpt",
                      .description = "Loans of each employee"},
                     {.name = "Loan Sheet",
                      .fileName = "LoanSheet.rpt",
                      .description = "Loans of each employee on a page of its own, to be signed"},
                     {.name = "Longest Out",
                      .fileName = "LongestOut.rpt",
                      .description = "Tools that are out, the longest first"},
                     {.name = "Still Out by Employee",
                      .fileName = "StillOutByEmployee.rpt",
                      .description = "Tools that each employee still has"},
                     {.name = "Still Out by Tool",
                      .fileName = "StillOutByTool.rpt",
                      .description = "Tools that are out, by description"},
                     {.name = "Loans by Employee",
                      .fileName = "LoansByEmployee.rpt",
                      .description = "How many tools each employee has lent"}}},
        {.name = "Tools Scrapped",
         .tables = {"Scrap", "Employee", "ScrapReasons", "Operation"},
         .reports = {{.name = "Tools Scrapped",
                      .fileName = "ToolsScrapped.rpt",
                      .description = "Scrapped tools by reason, with their price"},
                     {.name = "Scrap Cost by Job",
                      .fileName = "ScrapCostByJob.rpt",
                      .description = "What scrapped tools cost each job, with a chart"},
                     {.name = "Scrap Cost by Month",
                      .fileName = "ScrapCostByMonth.rpt",
                      .description = "What scrapped tools cost each month, with a chart"}}},
        {.name = "Junk Tools",
         .tables = {"Scrap", "Job"},
         .reports = {{.name = "Junk Tools", .fileName = "JunkTools.rpt", .description = "Scrapped tools of each job"}}},
        {.name = "Tools Type",
         .tables = {"Tools", "Types", "Locations"},
         .reports = withThoseOfTools({{.name = "Tools by Type",
                                       .fileName = "ToolsByType.rpt",
                                       .description = "Tools of each type, with their price"}})},
        {.name = "Tools Loc",
         .tables = {"Tools", "Types", "Locations"},
         .reports =
             withThoseOfTools({{.name = "Tools by Location",
                                .fileName = "ToolsByLocation.rpt",
                                .description = "Tools of each location, with their price"},
                               {.name = "Count Sheet",
                                .fileName = "CountSheet.rpt",
                                .description = "Tools of each location, to be ticked off with a bar code reader"}})},
        {.name = "Employee",
         .tables = {"Employee"},
         .reports = {{.name = "Employees", .fileName = "Employees.rpt", .description = "List of the employees"},
                     {.name = "Employee Badges",
                      .fileName = "EmployeeBadges.rpt",
                      .description = "A badge with a bar code for each employee"}}},
        {.name = "Tools Out",
         .tables = {},
         .reports = {{.name = "Tools Checked Out",
                      .fileName = "ToolsCheckedOut.rpt",
                      .description = "Loans of each employee"}}},
        {.name = "All Tools",
         .tables = {},
         .reports = {{.name = "Tools by Type",
                      .fileName = "ToolsByType.rpt",
                      .description = "Tools of each type, with their price"}}},
    };
    return modules;
}
