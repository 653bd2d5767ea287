#include "reports/ResultsKind.h"

// Two of these fragments name what the loans' statement does not have. A click on those headings ends in the engine's
// message, as it does everywhere in the suite.
const ResultsKind ResultsKind::frmReportToolsOutQresults{
    "frmReportToolsOutQresults",
    "Checked-Out Query Results",
    "dbgCustFound",
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
    {"Select * from reports where reports.Module = 'Tools CheckedOut' order by name",
     "Module = 'Tools CheckedOut' and Default = true", "name = '"},
    "{CheckOutIn.id} = ",
    " or {CheckOutIn.id} = ",
    "id",
};

const ResultsKind ResultsKind::frmReportToolsScrapQresults{
    "frmReportToolsScrapQresults",
    "Scrap Query Results",
    "dbgCustFound",
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
    {"Select * from reports where reports.Module = 'Tools Scrapped' order by name",
     "Module = 'Tools Scrapped' and Default = true", "name = '"},
    "{Scrap.id} = ",
    " or {Scrap.id} = ",
    "id",
};

const ResultsKind ResultsKind::frmReportToolsJunkQresults{
    "frmReportToolsJunkQresults",
    "Junk Query Results",
    "dbgCustFound",
    {
        {"Scrap ID", "ID"},
        {"Job #", "Job", " order by Job", " order by Job DESC"},
        {"Employee", "Employee", " order by Employee", " order by Employee DESC"},
        {"Date", "Date", " order by Date", " order by Date DESC"},
        {"Description", "Description", " order by Description", " order by Description DESC"},
        {"Part Number", "PartNumber", " order by PartNumber", " order by PartNumber DESC"},
        {"Manufacturer", "Manufacturer", " order by Manufacturer", " order by Manufacturer DESC"},
        {"Price", "PricePer", " order by PricePer", " order by PricePer DESC", BoundGrid::Column::Currency},
        {"Scrap Date", "ScrapDate", " order by ScrapDate", " order by ScrapDate DESC"},
        {"Notes", "Notes", " order by Notes", " order by Notes DESC"},
    },
    {"Select * from reports where reports.Module = 'Junk Tools' order by name",
     "Module = 'Junk Tools' and Default = true", "name = '"},
    "{Job.JobNo} = ",
    " or {Job.Jobno} = ",
    "JobNo",
    "Job",
};

const ResultsKind ResultsKind::frmEmpQresults{
    "frmEmpQresults",
    "Employee Query Results",
    "dbgCustFound",
    {
        {"Employee #", "EmpID"},
        {"Last Name", "LastName", " order by LastName", " order by Lastname DESC"},
        {"First Name", "FirstName", " order by FirstName", " order by FirstName DESC"},
        {"Status", "EmpStatus", " order by EmpStatus", " order by EmpStatus DESC"},
    },
    {"Select * from reports where reports.Module = 'Employee' order by name", "Module = 'Employee' and Default = true",
     "name = '"},
    "{Employee.Empid} = ",
    " or {Employee.Empid} = ",
    "Empid",
};

namespace {

constexpr TemplateList toolsByLocation{
    "SELECT * FROM Reports WHERE Reports.Module = 'Tools Loc' ORDER BY Name",
    "Module = 'Tools Loc' and Default = True",
    "Name = '",
};

}

const ResultsKind ResultsKind::frmReportAllToolsQresults{
    "frmReportAllToolsQresults",
    "All-Tools Query Results",
    "sprToolFound",
    {
        {.heading = "Tool Description", .field = "ToolDesc", .standIn = "Description"},
        {"Part Number", "PartNumber"},
        {.heading = "Type", .field = "TypeDesc", .standIn = "Type", .standInNames = "Select ID,Description from Types"},
        {.heading = "Location",
         .field = "LocationDesc",
         .standIn = "Location",
         .standInNames = "Select ID,Description from Locations"},
        {"Manufacturer", "Manufacturer"},
    },
    {"SELECT * FROM Reports WHERE Reports.Module = 'Tools Type' ORDER BY Name",
     "Module = 'Tools Type' and Default = True", "Name = '"},
    "{Tools.ID} = ",
    " OR {Tools.ID} = ",
    "ID",
    nullptr,
    &toolsByLocation,
};
