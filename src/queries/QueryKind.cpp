#include "queries/QueryKind.h"

#include "queries/ResultsKind.h"
#include "reports/PrintBy.h"

const QueryKind QueryKind::frmQueryCheckedOut{
    .name = "frmQueryCheckedOut",
    .caption = "Query - Tools Checked Out",
    .criteria =
        {
            {
                .caption = "Description",
                .useBox = "chkUseDescription",
                .rangeBox = "chkDescription",
                .valueBoxes = "dbcDescription",
                .source = "datTool",
                .choices = {.statement = "Select distinct CheckOutDesc from CheckOutIn order by CheckOutDesc",
                            .shows = "CheckOutDesc"},
                .single = {" and CheckOutIn.CheckOutDesc = '%1'", " and {CheckOutIn.CheckOutDesc} = '%1'"},
                .range = {" and CheckOutIn.CheckOutDesc between '%1' and '%2'",
                          " and {CheckOutIn.CheckOutDesc} in '%1' to '%2'"},
            },
            {
                .caption = "Employee",
                .useBox = "chkUseEmp",
                .rangeBox = "chkEmp",
                .valueBoxes = "dbcEmp",
                .source = "datEmp",
                .choices = {.statement = "SELECT distinct EmpId, ucase([employee.lastname]) & \" \" & "
                                         "ucase([employee.firstname])as EmpName"
                                         " FROM Employee INNER JOIN CheckOutIn ON Employee.EmpID=CheckOutIn.Employee"
                                         " order by ucase([employee.lastname]) & \" \" & ucase([employee.firstname])",
                            .shows = "EmpName",
                            .gives = "EmpId"},
                .single = {" and Employee.EmpId = %1", " and {Employee.EmpId} = %1"},
                .range = {" and Employee.LastName between '%1' and '%2'", " and {Employee.LastName} in '%1' to '%2'"},
                .value = Criterion::Employee,
            },
            {
                .caption = "Part #",
                .useBox = "chkUsePart",
                .rangeBox = "chkPart",
                .valueBoxes = "dbcPart",
                .source = "datPart",
                .choices = {.statement = "Select distinct CheckOutPartNo from CheckOutIn Where CheckOutPartNo <> '' "
                                         "order by CheckOutPartNo",
                            .shows = "CheckOutPartNo"},
                .single = {" and CheckOutIn.CheckOutPartNo = '%1'", " and {CheckOutIn.CheckOutPartNo} = '%1'"},
                .range = {" and CheckOutIn.CheckOutPartNo between '%1' and '%2'",
                          " and {CheckOutIn.CheckOutPartNo} in '%1' to '%2'"},
            },
            {
                .caption = "Job #",
                .useBox = "chkUseJobNo",
                .rangeBox = "chkJobNo",
                .valueBoxes = "dbcJobNo",
                .source = "datJob",
                .choices =
                    {.statement =
                         "SELECT distinct CheckOutIn.JobOrOH FROM CheckOutIn WHERE (((CheckOutIn.LineItemTypeId)=4))"
                         " ORDER BY CheckOutIn.JobOrOh desc",
                     .shows = "JobOrOH"},
                .single = {" and CheckOutIn.JobOrOh = %1 and CheckOutIn.LineItemTypeId=4",
                           " and {CheckOutIn.JobOrOh} = %1 and {CheckOutIn.LineItemTypeId} = 4"},
                .range = {" and CheckOutIn.JobOrOh between %1 and %2 and CheckOutIn.LineItemTypeId=4",
                          " and {CheckOutIn.JobOrOh} in %1 to %2 and {CheckOutIn.LineItemTypeId} = 4"},
            },
            {
                .caption = "Overhead",
                .useBox = "chkUseOverhead",
                .rangeBox = "chkOverhead",
                .valueBoxes = "dbcOverhead",
                .source = "datOperation",
                .choices = {.statement = "SELECT distinct Operation.Description FROM Operation"
                                         " INNER JOIN CheckOutIn ON Operation.OperNo = CheckOutIn.JobOrOH"
                                         " WHERE (((CheckOutIn.LineItemTypeId)=5)) ORDER BY Operation.Description",
                            .shows = "Description"},
                .single = {" and Operation.description = '%1'", " and {Operation.description} = '%1'"},
                .range = {" and Operation.description between '%1' and '%2'",
                          " and {Operation.description} in '%1' to '%2'"},
            },
            {
                .caption = "Check In",
                .useBox = "chkUseCheckIn",
                .rangeBox = "chkCheckIn",
                .valueBoxes = "dbcCheckIn",
                .source = "datCheckIn",
                .choices =
                    {.statement =
                         "SELECT DISTINCT Format([CheckOutIn].[DateIn],'Short Date') AS ShortDateIn FROM CheckOutIn"
                         " WHERE (((CheckOutIn.DateIn) Is Not Null)) ORDER BY Format([CheckOutIn].[DateIn],'Short "
                         "Date')",
                     .shows = "ShortDateIn"},
                .single = {" and format(CheckOutIn.DateIn,'short date') = #%1#", " and {CheckOutIn.DateIn} = date(%1)"},
                .range = {" and format(CheckOutIn.DateIn,'short date') between #%1# and #%2#",
                          " and {CheckOutIn.DateIn} in date(%1) to date(%2)"},
                .value = Criterion::ShortDate,
            },
            {
                .caption = "Check Out",
                .useBox = "chkUseCheckOut",
                .rangeBox = "chkCheckOut",
                .valueBoxes = "dbcCheckOut",
                .source = "datCheckOut",
                .choices =
                    {.statement =
                         "SELECT DISTINCT Format([CheckOutIn].[DateOut],'Short Date') AS ShortDateOut FROM CheckOutIn"
                         " WHERE (((CheckOutIn.DateOut) Is Not Null)) ORDER BY Format([CheckOutIn].[DateOut],'Short "
                         "Date')",
                     .shows = "ShortDateOut"},
                .single = {" and format(CheckOutIn.DateOut,'short date') = #%1#",
                           " and {CheckOutIn.DateOut}= date(%1)"},
                .range = {" and format(CheckOutIn.DateOut,'short date') between #%1# and #%2#",
                          " and {CheckOutIn.DateOut} in date(%1) to date(%2)"},
                .value = Criterion::ShortDate,
            },
        },
    .statement =
        "SELECT CheckOutIn.CheckOutDesc, CheckOutIn.CheckOutPartNo, CheckOutIn.ID, CheckOutIn.DateOut, "
        "CheckOutIn.DateIn,"
        " ucase([employee.lastname]) & \" \" & ucase([employee.firstname])as EmpName,"
        " IIf([lineItemTypeid]=5,[operation.description],'') AS OhDesc, IIf([lineItemTypeid]=4,[JobOrOh],'') AS JobNo"
        " FROM (CheckOutIn LEFT JOIN Employee ON CheckOutIn.Employee = Employee.EmpID)"
        " LEFT JOIN Operation ON CheckOutIn.JobOrOH = Operation.OperNo",
    .results = ResultsKind::frmReportToolsOutQresults,
};

namespace {

constexpr SubFolders subLocations{
    .parentId = "Select Id from Locations Where Description= '%1'",
    .descriptions = "Select Description from Locations where Parent=%1",
    .alternative = {" OR  locations.description = '%1'", " OR  {locations.description} = '%1'"},
};
constexpr SubFolders subTypes{
    .parentId = "Select Id from Types Where Description= '%1'",
    .descriptions = "Select Description from Types where Parent=%1",
    .alternative = {" OR  types.description = '%1'", " OR  {types.description} = '%1'"},
};

}

const QueryKind QueryKind::frmQueryTypeLoc{
    .name = "frmQueryTypeLoc",
    .caption = "Query - Tools Type / Location",
    .criteria =
        {
            {
                .caption = "Description",
                .useBox = "chkUseDescription",
                .rangeBox = "chkDescription",
                .valueBoxes = "dbcDescription",
                .source = "datTool",
                .choices = {.statement = "Select distinct description from Tools order by description",
                            .shows = "description"},
                .single = {" and tools.description = '%1'", " and {tools.description} = '%1'"},
                .range = {" and tools.description between '%1' and '%2'", " and {tools.description} in '%1' to '%2'"},
            },
            {
                .caption = "Part #",
                .useBox = "chkUsePart",
                .rangeBox = "chkPart",
                .valueBoxes = "dbcPart",
                .source = "datPart",
                .choices = {.statement =
                                "Select distinct PartNumber from Tools Where PartNumber <>'' order by PartNumber",
                            .shows = "PartNumber"},
                .single = {" and tools.PartNumber = '%1'", " and {tools.PartNumber} = '%1'"},
                .range = {" and tools.PartNumber between '%1' and '%2'", " and {tools.PartNumber} in '%1' to '%2'"},
            },
            {
                .caption = "Location",
                .useBox = "chkUseLocation",
                .rangeBox = "chkLocation",
                .valueBoxes = "dbcLocation",
                .source = "datLocation",
                .choices = {.statement =
                                "Select Locations.Description,Locations.Id from Locations order by description",
                            .shows = "Description",
                            .gives = "Id"},
                .single = {" and locations.description = '%1'", " and {locations.description} = '%1'"},
                .range = {" and locations.description between '%1' and '%2'",
                          " and {locations.description} in '%1' to '%2'"},
                .value = Criterion::AsShown,
                .subFolders = &subLocations,
            },
            {
                .caption = "Type",
                .useBox = "chkUseType",
                .rangeBox = "chkType",
                .valueBoxes = "dbcType",
                .source = "datType",
                .choices = {.statement = "Select Types.Description,Types.ID from Types order by description",
                            .shows = "Description",
                            .gives = "ID"},
                .single = {" and types.description = '%1'", " and {types.description} = '%1'"},
                .range = {" and types.description between '%1' and '%2'", " and {types.description} in '%1' to '%2'"},
                .value = Criterion::AsShown,
                .subFolders = &subTypes,
            },
            {
                .caption = "Manufacturer",
                .useBox = "chkUseMan",
                .rangeBox = "chkMan",
                .valueBoxes = "dbcMan",
                .source = "datMan",
                .choices =
                    {.statement =
                         "Select distinct Manufacturer from Tools Where Manufacturer <> '' order by Manufacturer",
                     .shows = "Manufacturer"},
                .single = {" and tools.Manufacturer = '%1'", " and {tools.manufacturer} = '%1'"},
                .range = {" and tools.Manufacturer between '%1' and '%2'", " and {tools.manufacturer} in '%1' to '%2'"},
            },
        },
    .statement =
        "select tools.id,tools.description as ToolDesc, tools.location,tools.type,tools.manufacturer, tools.PartNumber,"
        " locations.description as LocationDesc,types.description as TypeDesc"
        " FROM (Tools INNER JOIN Types ON Tools.Type = Types.ID) INNER JOIN Locations ON Tools.Location = Locations.ID",
    .results = ResultsKind::frmReportAllToolsQresults,
};

const QueryKind QueryKind::frmReportAllTools{
    .name = "frmReportAllTools",
    .caption = "Report All Tools",
    .criteria =
        {
            {
                .caption = "Tool",
                .useBox = "chkUseTool",
                .rangeBox = "chkTool",
                .valueBoxes = "dbcTool",
                .source = "datTool",
                .choices = {.statement = "Select distinct description from Tools order by description",
                            .shows = "description"},
                .single = {" and description = '%1'", " and {tools.description} = '%1'"},
                .range = {" and description between '%1' and '%2'", " and {tools.description} in '%1' to '%2'"},
            },
            {
                .caption = "Manufac.",
                .useBox = "chkUseMan",
                .rangeBox = "chkMan",
                .valueBoxes = "dbcMan",
                .source = "datMan",
                .choices = {.statement = "Select distinct Manufacturer from Tools order by Manufacturer",
                            .shows = "Manufacturer"},
                .single = {" and Manufacturer = '%1'", " and {tools.manufacturer} = '%1'"},
                .range = {" and Manufacturer between '%1' and '%2'", " and {tools.manufacturer} in '%1' to '%2'"},
            },
            {
                .caption = "Part #",
                .useBox = "chkUsePart",
                .rangeBox = "chkPart",
                .valueBoxes = "dbcPart",
                .source = "datPart",
                .choices = {.statement = "Select distinct PartNumber from Tools order by PartNumber",
                            .shows = "PartNumber"},
                .single = {" and PartNumber = '%1'", " and {tools.PartNumber} = '%1'"},
                .range = {" and PartNumber between '%1' and '%2'", " and {tools.PartNumber} in '%1' to '%2'"},
            },
            {
                .caption = "Price",
                .useBox = "chkUsePrice",
                .rangeBox = "chkPrice",
                .valueBoxes = "dbcPrice",
                .source = "datPrice",
                .choices = {.statement = "Select distinct Priceper, format(Priceper,'currency') as [price] from Tools "
                                         "order by PricePer",
                            .shows = "price",
                            .gives = "Priceper"},
                .single = {" and PricePer = %1", " and {tools.PricePer} = %1"},
                .range = {" and PricePer between %1 and %2", " and {tools.PricePer} in %1 to %2"},
                .value = Criterion::Price,
            },
        },
    .statement = "Select * FROM Tools",
    .results = ResultsKind::frmReportAllToolsQresults,
};

const QueryKind QueryKind::frmQueryScrap{
    .name = "frmQueryScrap",
    .caption = "Query - Tools Scrapped",
    .criteria =
        {
            {
                .caption = "Description",
                .useBox = "chkUseDescription",
                .rangeBox = "chkDescription",
                .valueBoxes = "dbcDescription",
                .source = "datTool",
                .choices = {.statement = "Select distinct description from Scrap order by description",
                            .shows = "description"},
                .single = {" and Scrap.description = '%1'", " and {Scrap.description} = '%1'"},
                .range = {" and Scrap.description between '%1' and '%2'", " and {Scrap.description} in '%1' to '%2'"},
            },
            {
                .caption = "Employee",
                .useBox = "chkUseEmp",
                .rangeBox = "chkEmp",
                .valueBoxes = "dbcEmp",
                .source = "datEmp",
                .choices = {.statement = "SELECT distinct Scrap.Employee, ucase([employee.lastname]) & \" \" & "
                                         "ucase([employee.firstname])as EmpName"
                                         " FROM Scrap INNER JOIN Employee ON Scrap.Employee = Employee.EmpID"
                                         " order by ucase([employee.lastname]) & \" \" & ucase([employee.firstname])",
                            .shows = "EmpName",
                            .gives = "Employee"},
                .single = {" and Employee.EmpId = %1", " and {Employee.EmpId} = %1"},
                .range = {" and Employee.LastName between '%1' and '%2'", " and {Employee.LastName} in '%1' to '%2'"},
                .value = Criterion::Employee,
            },
            {
                .caption = "Part #",
                .useBox = "chkUsePart",
                .rangeBox = "chkPart",
                .valueBoxes = "dbcPart",
                .source = "datPart",
                .choices = {.statement =
                                "Select distinct PartNumber from Scrap Where PartNumber <> '' order by PartNumber",
                            .shows = "PartNumber"},
                .single = {" and Scrap.PartNumber = '%1'", " and {Scrap.PartNumber} = '%1'"},
                .range = {" and Scrap.PartNumber between '%1' and '%2'", " and {Scrap.PartNumber} in '%1' to '%2'"},
            },
            {
                .caption = "Job #",
                .useBox = "chkUseJobNo",
                .rangeBox = "chkJobNo",
                .valueBoxes = "dbcJobNo",
                .source = "datJob",
                .choices = {.statement =
                                "SELECT distinct JobOrOH FROM Scrap WHERE LineItemTypeId = 4 ORDER BY JobOrOh desc",
                            .shows = "JobOrOH"},
                .single = {" and Scrap.JobOrOh = %1 and Scrap.LineItemTypeId=4",
                           " and {Scrap.JobOrOh} = %1 and {Scrap.LineItemTypeId} = 4"},
                .range = {" and Scrap.JobOrOh between %1 and %2 and Scrap.LineItemTypeId=4",
                          " and {Scrap.JobOrOh} in %1 to %2 and {Scrap.LineItemTypeId} = 4"},
            },
            {
                .caption = "Overhead",
                .useBox = "chkUseOverhead",
                .rangeBox = "chkOverhead",
                .valueBoxes = "dbcOverhead",
                .source = "datOperation",
                .choices = {.statement = "SELECT distinct Scrap.JobOrOh,Operation.Description FROM Scrap"
                                         " INNER JOIN Operation ON Scrap.JobOrOH = Operation.OperNo"
                                         " WHERE Scrap.LineItemTypeId=5 ORDER BY Operation.Description",
                            .shows = "Description",
                            .gives = "JobOrOh"},
                .single = {" and Operation.description = '%1'", " and {Operation.description} = '%1'"},
                .range = {" and Operation.description between '%1' and '%2'",
                          " and {Operation.description} in '%1' to '%2'"},
            },
            {
                .caption = "Scrap Reason",
                .useBox = "chkUseReason",
                .rangeBox = "chkReason",
                .valueBoxes = "dbcReason",
                .source = "datReason",
                .choices =
                    {.statement =
                         "SELECT DISTINCT Scrap.Reason,ScrapReasons.Description FROM Scrap"
                         " INNER JOIN ScrapReasons ON Scrap.Reason = ScrapReasons.Id ORDER BY ScrapReasons.Description",
                     .shows = "Description",
                     .gives = "Reason"},
                .single = {" and ScrapReasons.Description = '%1'", " and {ScrapReasons.Description} = '%1'"},
                .range = {" and ScrapReasons.Description between '%1' and '%2'",
                          " and {ScrapReasons.Description} in '%1' to '%2'"},
            },
            {
                .caption = "Scrap Date",
                .useBox = "chkUseDate",
                .rangeBox = "chkDate",
                .valueBoxes = "dbcDate",
                .source = "datDate",
                .choices = {.statement =
                                "SELECT DISTINCT Format([Scrap].[ScrapDate],'Short Date') AS ShortScrapDate FROM Scrap"
                                " ORDER BY Format([Scrap].[ScrapDate],'Short Date')",
                            .shows = "ShortScrapDate"},
                .single = {" and format(Scrap.ScrapDate,'short date') = #%1#", " and {Scrap.ScrapDate}= date(%1)"},
                .range = {" and format(Scrap.ScrapDate,'short date') between #%1# and #%2#",
                          " and {Scrap.ScrapDate} in date(%1) to date(%2)"},
                .value = Criterion::ShortDate,
            },
            {
                .caption = "Manufacturer",
                .useBox = "chkUseMfg",
                .rangeBox = "chkMfg",
                .valueBoxes = "dbcMfg",
                .source = "datMfg",
                .choices =
                    {.statement =
                         "SELECT DISTINCT Manufacturer FROM Scrap Where Manufacturer <> '' ORDER BY Manufacturer",
                     .shows = "Manufacturer"},
                .single = {" and Scrap.Manufacturer = '%1'", " and {Scrap.Manufacturer} = '%1'"},
                .range = {" and Scrap.Manufacturer between '%1' and '%2'", " and {Scrap.Manufacturer} in '%1' to '%2'"},
            },
        },
    .statement =
        "SELECT Scrap.Description, Scrap.PartNumber, Scrap.ID, Scrap.ScrapDate, ScrapReasons.Description as ScrapDesc,"
        " ucase([employee.lastname]) & \" \" & ucase([employee.firstname])as EmpName,"
        " IIf([lineItemTypeid]=5,[operation.description],'') AS OhDesc, IIf([lineItemTypeid]=4,[JobOrOh],'') AS JobNo"
        " FROM ((Scrap LEFT JOIN Employee ON Scrap.Employee = Employee.EmpID)"
        " LEFT JOIN ScrapReasons ON Scrap.Reason = ScrapReasons.ID)"
        " LEFT JOIN Operation ON Scrap.JobOrOH = Operation.OperNo",
    .results = ResultsKind::frmReportToolsScrapQresults,
};

const QueryKind QueryKind::frmReportJunkTools{
    .name = "frmReportJunkTools",
    .caption = "Report Junk Tools",
    .criteria =
        {
            {
                .caption = "Employee",
                .useBox = "chkUseEmp",
                .rangeBox = "chkEmployee",
                .valueBoxes = "dbcEmp",
                .source = "datEmp",
                .choices = {.statement = "Select empid from employee order by empid DESC", .shows = "empid"},
                .single = {" and Employee = %1", " and {Scrap.employee} = %1"},
                .range = {" and Employee between %1 and %2", " and {Scrap.employee} in %1 to %2"},
            },
            {
                .caption = "Job #",
                .useBox = "chkUseJob",
                .rangeBox = "chkJob",
                .valueBoxes = "dbcJob",
                .source = "datJob",
                .choices = {.statement = "Select Jobno from Job order by jobno desc", .shows = "Jobno"},
                .single = {" and Job = %1", " and {Scrap.Job} = %1"},
                .range = {" and Job between %1 and %2", " and {Scrap.Job} in %1 to %2"},
            },
            {
                .caption = "Date In",
                .useBox = "chkUseDate",
                .rangeBox = "chkDate",
                .valueBoxes = "etxtDate",
                .source = nullptr,
                .single = {" and Date = #%1#", " and {Scrap.Date} = date(%1)"},
                .range = {" and Date between #%1# and #%2#", " and {Scrap.Date} in date(%1) to date(%2)"},
                .value = Criterion::ShortDate,
            },
        },
    .statement = "Select * FROM Scrap",
    .results = ResultsKind::frmReportToolsJunkQresults,
    .printBy = {{&PrintByKind::frmPrByJob, "Ctrl+J"}, {&PrintByKind::frmPrByEmp, "Ctrl+E"}},
};
