#include "queries/ResultsKind.h"

// Two of these fragments name what the loans' statement does not have. A click on those headings ends in the engine's
// message, as it does everywhere in the suite.
const ResultsKind ResultsKind::frmReportToolsOutQresults{
    .name = "frmReportToolsOutQresults",
    .caption = "Checked-Out Query Results",
    .grid = "dbgCustFound",
    .columns =
        {
            {"Check Out ID", "ID"},
            {"Decription", "CheckOutDesc", " order by tools.description"},
            {"Part Number", "CheckOutPartNo", " order by PartNumber"},
            {"Employee", "EmpName", " order by Employee.LastName"},
            {"Job #", "JobNo", " order by JobOrOh"},
            {"OH Operation", "OhDesc", " order by Operation.Description"},
            {"Check Out Date", "DateOut", " order by DateOut"},
            {"Check In Date", "DateIn", " order by DateIn"},
        },
    .templates =
        {
            .statement = "Select * from reports where reports.Module = 'Tools CheckedOut' order by name",
            .defaultOne = "Module = 'Tools CheckedOut' and Default = true",
            .named = "name = '",
        },
    .firstRow = "{CheckOutIn.id} = ",
    .furtherRow = " or {CheckOutIn.id} = ",
    .number = "id",
};

const ResultsKind ResultsKind::frmReportToolsScrapQresults{
    .name = "frmReportToolsScrapQresults",
    .caption = "Scrap Query Results",
    .grid = "dbgCustFound",
    .columns =
        {
            {"Scrap ID", "ID"},
            {"Description", "Description", " order by ScrapDesc"},
            {"Part Number", "PartNumber", " order by PartNumber"},
            {"Employee", "EmpName", " order by Employee.LastName"},
            {"Job #", "JobNo", " order by JobOrOh"},
            {"OH Operation", "OhDesc", " order by Operation.Description"},
            {"Scrap Date", "ScrapDate", " order by ScrapDate"},
            {"Scrap Reason", "ScrapDesc", " order by ScrapReasons.Description"},
        },
    .templates =
        {
            .statement = "Select * from reports where reports.Module = 'Tools Scrapped' order by name",
            .defaultOne = "Module = 'Tools Scrapped' and Default = true",
            .named = "name = '",
        },
    .firstRow = "{Scrap.id} = ",
    .furtherRow = " or {Scrap.id} = ",
    .number = "id",
};

const ResultsKind ResultsKind::frmReportToolsJunkQresults{
    .name = "frmReportToolsJunkQresults",
    .caption = "Junk Query Results",
    .grid = "dbgCustFound",
    .columns =
        {
            {"Scrap ID", "ID"},
            {"Job #", "Job", " order by Job", " order by Job DESC"},
            {"Employee", "Employee", " order by Employee", " order by Employee DESC"},
            {"Date", "Date", " order by Date", " order by Date DESC"},
            {"Description", "Description", " order by Description", " order by Description DESC"},
            {"Part Number", "PartNumber", " order by PartNumber", " order by PartNumber DESC"},
            {"Manufacturer", "Manufacturer", " order by Manufacturer", " order by Manufacturer DESC"},
            {
                .heading = "Price",
                .field = "PricePer",
                .sort = " order by PricePer",
                .sortDescending = " order by PricePer DESC",
                .form = BoundGrid::Column::Currency,
            },
            {"Scrap Date", "ScrapDate", " order by ScrapDate", " order by ScrapDate DESC"},
            {"Notes", "Notes", " order by Notes", " order by Notes DESC"},
        },
    .templates =
        {
            .statement = "Select * from reports where reports.Module = 'Junk Tools' order by name",
            .defaultOne = "Module = 'Junk Tools' and Default = true",
            .named = "name = '",
        },
    .firstRow = "{Job.JobNo} = ",
    .furtherRow = " or {Job.Jobno} = ",
    .number = "JobNo",
    .numberStandIn = "Job",
};

const ResultsKind ResultsKind::frmEmpQresults{
    .name = "frmEmpQresults",
    .caption = "Employee Query Results",
    .grid = "dbgCustFound",
    .columns =
        {
            {"Employee #", "EmpID"},
            {"Last Name", "LastName", " order by LastName", " order by Lastname DESC"},
            {"First Name", "FirstName", " order by FirstName", " order by FirstName DESC"},
            {"Status", "EmpStatus", " order by EmpStatus", " order by EmpStatus DESC"},
        },
    .templates =
        {
            .statement = "Select * from reports where reports.Module = 'Employee' order by name",
            .defaultOne = "Module = 'Employee' and Default = true",
            .named = "name = '",
        },
    .firstRow = "{Employee.Empid} = ",
    .furtherRow = " or {Employee.Empid} = ",
    .number = "Empid",
};

namespace {

constexpr TemplateList toolsByLocation{
    .statement = "SELECT * FROM Reports WHERE Reports.Module = 'Tools Loc' ORDER BY Name",
    .defaultOne = "Module = 'Tools Loc' and Default = True",
    .named = "Name = '",
};

}

const ResultsKind ResultsKind::frmReportAllToolsQresults{
    .name = "frmReportAllToolsQresults",
    .caption = "All-Tools Query Results",
    .grid = "sprToolFound",
    .columns =
        {
            {.heading = "Tool Description", .field = "ToolDesc", .standIn = "Description"},
            {"Part Number", "PartNumber"},
            {.heading = "Type",
             .field = "TypeDesc",
             .standIn = "Type",
             .standInNames = "Select ID,Description from Types"},
            {.heading = "Location",
             .field = "LocationDesc",
             .standIn = "Location",
             .standInNames = "Select ID,Description from Locations"},
            {"Manufacturer", "Manufacturer"},
        },
    .templates =
        {
            .statement = "SELECT * FROM Reports WHERE Reports.Module = 'Tools Type' ORDER BY Name",
            .defaultOne = "Module = 'Tools Type' and Default = True",
            .named = "Name = '",
        },
    .firstRow = "{Tools.ID} = ",
    .furtherRow = " OR {Tools.ID} = ",
    .number = "ID",
    .templatesByLocation = &toolsByLocation,
};
