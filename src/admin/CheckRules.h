#pragma once

/// A kind of fault that rows of a table may have, in words that the languages of both engines share: names in brackets,
/// COALESCE, CASE, LIKE.
struct RowCheck {
    const char *table;
    /// Which rows have the fault: what stands behind WHERE, with a GROUP BY where one sentence tells of several rows.
    const char *condition;
    /// What is said of each; its % stand for `fields`.
    const char *sentence;
    const char *fields;
    /// What mends all of them where that is safe: what stands behind SET. A % is the highest number that a tool or a
    /// scrap record was given.
    const char *change = nullptr;
    /// What is said of each once it is mended.
    const char *mended = nullptr;
};

/// In the order in which they are looked for: no change brings up a fault of a row above it again. A scrapped tool that
/// names a deleted type, location or reason is no fault, nor is a loan of a scrapped tool: the program leaves them so.
inline constexpr RowCheck rowChecks[] = {
    {.table = "Types",
     .condition =
         "COALESCE([Parent], -1) <> 0 AND NOT EXISTS (SELECT 1 FROM [Types] [P] WHERE [P].[ID] = [Types].[Parent])",
     .sentence = "Type % \"%\" lies below type %, which does not exist; the tree does not show it.",
     .fields = "[ID], [Description], COALESCE([Parent], 0)",
     .change = "[Parent] = 0",
     .mended = "Moved to the top level."},
    {.table = "Locations",
     .condition = "COALESCE([Parent], -1) <> 0 AND NOT EXISTS (SELECT 1 FROM [Locations] [P] WHERE [P].[ID] = "
                  "[Locations].[Parent])",
     .sentence = "Location % \"%\" lies below location %, which does not exist; the tree does not show it.",
     .fields = "[ID], [Description], COALESCE([Parent], 0)",
     .change = "[Parent] = 0",
     .mended = "Moved to the top level."},

    {.table = "CheckOutIn",
     .condition = "[Active] <> 0 AND [Tool_Id] NOT IN (SELECT [ID] FROM [Tools]) AND [Tool_Id] IN (SELECT [ToolID] "
                  "FROM [Scrap])",
     .sentence = "Loan % of tool % \"%\" is still open, but the tool is scrapped.",
     .fields = "[ID], [Tool_Id], [CheckOutDesc]",
     .change = "[Active] = 0, [DateIn] = (SELECT max([ScrapDate]) FROM [Scrap] WHERE [ToolID] = [Tool_Id])",
     .mended = "Closed as of the day it was scrapped."},
    {.table = "CheckOutIn",
     .condition =
         "[Active] <> 0 AND EXISTS (SELECT 1 FROM [CheckOutIn] [Later] WHERE [Later].[Tool_Id] = "
         "[CheckOutIn].[Tool_Id] AND [Later].[Active] <> 0 AND (COALESCE([Later].[DateOut], '0001-01-01 00:00:00'), "
         "[Later].[ID]) > (COALESCE([CheckOutIn].[DateOut], '0001-01-01 00:00:00'), [CheckOutIn].[ID]))",
     .sentence = "Loan % of tool % \"%\" is still open, but the tool has gone out again since.",
     .fields = "[ID], [Tool_Id], [CheckOutDesc]",
     .change = "[Active] = 0, [DateIn] = (SELECT min([Later].[DateOut]) FROM [CheckOutIn] [Later] WHERE "
               "[Later].[Tool_Id] = [CheckOutIn].[Tool_Id] AND ([Later].[DateOut], [Later].[ID]) > "
               "(COALESCE([CheckOutIn].[DateOut], '0001-01-01 00:00:00'), [CheckOutIn].[ID]))",
     .mended = "Closed as of the next loan."},
    {.table = "Tools",
     .condition =
         "[Out] <> 0 AND NOT EXISTS (SELECT 1 FROM [CheckOutIn] WHERE [Tool_Id] = [Tools].[ID] AND [Active] <> 0)",
     .sentence = "Tool % \"%\" is marked as out, but has no open loan.",
     .fields = "[ID], [Description]",
     .change = "[Out] = 0",
     .mended = "Marked as in the crib."},
    {.table = "Tools",
     .condition = "[Out] = 0 AND EXISTS (SELECT 1 FROM [CheckOutIn] WHERE [Tool_Id] = [Tools].[ID] AND [Active] <> 0)",
     .sentence = "Tool % \"%\" has an open loan, but is not marked as out.",
     .fields = "[ID], [Description]",
     .change = "[Out] = -1",
     .mended = "Marked as out."},

    {.table = "CheckOutIn",
     .condition = "[Tool_Id] NOT IN (SELECT [ID] FROM [Tools] UNION SELECT [ToolID] FROM [Scrap] WHERE [ToolID] IS NOT "
                  "NULL) GROUP BY [Tool_Id]",
     .sentence = "Tool % \"%\" has % loans (% open), but is neither in the crib nor scrapped; purging a scrap record "
                 "deletes the tool of the record's own number as well.",
     .fields = "[Tool_Id], min([CheckOutDesc]), count(*), sum(CASE WHEN [Active] <> 0 THEN 1 ELSE 0 END)"},
    {.table = "Tools",
     .condition = "[Type] NOT IN (SELECT [ID] FROM [Types])",
     .sentence = "Tool % \"%\" is of type %, which does not exist.",
     .fields = "[ID], [Description], [Type]"},
    {.table = "Tools",
     .condition = "[Location] NOT IN (SELECT [ID] FROM [Locations])",
     .sentence = "Tool % \"%\" is in location %, which does not exist.",
     .fields = "[ID], [Description], [Location]"},
    // A loan has the number as text, in old files with zeros before it; statements compare the two by value.
    {.table = "CheckOutIn",
     .condition = "COALESCE(ltrim([Employee], ' 0'), '') NOT IN (SELECT ltrim(CAST([EmpID] AS TEXT), '0') FROM "
                  "[Employee]) GROUP BY [Employee]",
     .sentence = "Employee \"%\" does not exist, but has loans: %.",
     .fields = "COALESCE(CAST([Employee] AS TEXT), ''), count(*)"},
    {.table = "Scrap",
     .condition = "COALESCE([Employee], 0) NOT IN (SELECT [EmpID] FROM [Employee]) GROUP BY [Employee]",
     .sentence = "Employee \"%\" does not exist, but has scrapped tools: %.",
     .fields = "COALESCE(CAST([Employee] AS TEXT), ''), count(*)"},
    {.table = "CheckOutIn",
     .condition = "COALESCE([LineItemTypeId], 0) NOT IN (SELECT [Index] FROM [LineItemType]) GROUP BY [LineItemTypeId]",
     .sentence = "There is no kind of charge %, but loans have it: %.",
     .fields = "COALESCE([LineItemTypeId], 0), count(*)"},
    {.table = "Scrap",
     .condition = "[LineItemTypeId] IS NULL",
     .sentence = "Scrap record % \"%\" has no kind of charge; the tree of scrapped tools ends there.",
     .fields = "[ID], [Description]"},
    {.table = "Scrap",
     .condition = "[LineItemTypeId] NOT IN (SELECT [Index] FROM [LineItemType])",
     .sentence =
         "Scrap record % \"%\" has the kind of charge %, which does not exist; the tree of scrapped tools ends there.",
     .fields = "[ID], [Description], [LineItemTypeId]"},
    {.table = "CheckOutIn",
     .condition = "[LineItemTypeId] = 4 AND COALESCE([JobOrOH], 0) NOT IN (SELECT [JobNo] FROM [Job] UNION SELECT "
                  "COALESCE([Jobno], 0) FROM [JobVorlane]) GROUP BY [JobOrOH]",
     .sentence = "There is no job %, but loans are charged to it: %.",
     .fields = "COALESCE([JobOrOH], 0), count(*)"},
    // Where an operation is called by a number, as "9120", a loan on it is stored with that number instead of its own.
    {.table = "CheckOutIn",
     .condition =
         "[LineItemTypeId] = 5 AND COALESCE([JobOrOH], 0) NOT IN (SELECT [OperNo] FROM [Operation]) AND CAST([JobOrOH] "
         "AS TEXT) NOT IN (SELECT COALESCE([Description], '') FROM [Operation]) GROUP BY [JobOrOH]",
     .sentence = "There is no operation %, but loans are charged to it: %.",
     .fields = "COALESCE([JobOrOH], 0), count(*)"},
    // Without the suite a scrapped tool is charged to a row of the program's own job list, by the row's number.
    {.table = "Scrap",
     .condition = "[LineItemTypeId] = 4 AND COALESCE([JobOrOH], 0) NOT IN (SELECT [JobNo] FROM [Job] UNION SELECT [ID] "
                  "FROM [JobVorlane] UNION SELECT COALESCE([Jobno], 0) FROM [JobVorlane]) GROUP BY [JobOrOH]",
     .sentence = "There is no job %, but scrapped tools are charged to it: %.",
     .fields = "COALESCE([JobOrOH], 0), count(*)"},
    {.table = "Scrap",
     .condition =
         "[LineItemTypeId] = 5 AND COALESCE([JobOrOH], 0) NOT IN (SELECT [OperNo] FROM [Operation]) GROUP BY [JobOrOH]",
     .sentence = "There is no operation %, but scrapped tools are charged to it: %; the tree of scrapped tools cannot "
                 "be shown.",
     .fields = "COALESCE([JobOrOH], 0), count(*)"},
    {.table = "Scrap",
     .condition = "[JobOrOH] IS NOT NULL GROUP BY [JobOrOH] HAVING count(DISTINCT [LineItemTypeId]) > 1",
     .sentence = "Tools were scrapped on a job and on an operation of the same number %; the tree of scrapped tools "
                 "cannot be shown.",
     .fields = "[JobOrOH]"},

    {.table = "Types",
     .condition = "[ID] NOT BETWEEN 1 AND 32767",
     .sentence = "Type % \"%\" has a number outside 1 to 32767; the tree cannot show it, nor what lies in it.",
     .fields = "[ID], [Description]"},
    {.table = "Locations",
     .condition = "[ID] NOT BETWEEN 1 AND 32767",
     .sentence = "Location % \"%\" has a number outside 1 to 32767; the tree cannot show it, nor what lies in it.",
     .fields = "[ID], [Description]"},
    {.table = "Tools",
     .condition = "[ID] NOT BETWEEN 1 AND 32767",
     .sentence = "Tool % \"%\" has a number outside 1 to 32767; it cannot be lent or scrapped.",
     .fields = "[ID], [Description]"},
    {.table = "Scrap",
     .condition = "[ToolID] NOT BETWEEN 1 AND 32767",
     .sentence = "Scrap record % \"%\" is of tool %, a number outside 1 to 32767; restored, it could not be lent.",
     .fields = "[ID], [Description], [ToolID]"},
    {.table = "Scrap",
     .condition = "[ID] IN (SELECT [ID] FROM [Tools])",
     .sentence = "Scrap record % \"%\" has the number of a tool in the crib; purging the record would delete that tool "
                 "as well.",
     .fields = "[ID], [Description]",
     .change = "[ID] = [ID] + %",
     .mended = "Given a number that no tool has."},
    {.table = "Scrap",
     .condition = "[ToolID] IN (SELECT [ID] FROM [Tools])",
     .sentence = "Scrap record % \"%\" is of tool %, which is in the crib; it cannot be restored, and purging it would "
                 "delete that tool's loans.",
     .fields = "[ID], [Description], [ToolID]"},

    {.table = "Types",
     .condition = "[Description] LIKE '%''%' OR [Description] LIKE '%\"%'",
     .sentence = "Type % (%) has a quote in its name; queries by that name may fail.",
     .fields = "[ID], [Description]"},
    {.table = "Locations",
     .condition = "[Description] LIKE '%''%' OR [Description] LIKE '%\"%'",
     .sentence = "Location % (%) has a quote in its name; queries by that name may fail.",
     .fields = "[ID], [Description]"},
    {.table = "Tools",
     .condition = "[Description] || COALESCE([Manufacturer], '') || COALESCE([PartNumber], '') LIKE '%''%' OR "
                  "[Description] || COALESCE([Manufacturer], '') || COALESCE([PartNumber], '') LIKE '%\"%'",
     .sentence = "Tool % (%, %, %) has a quote in its description, manufacturer or part number; lists and queries by "
                 "it may fail.",
     .fields = "[ID], [Description], [Manufacturer], [PartNumber]"},
    {.table = "ScrapReasons",
     .condition = "[Description] LIKE '%''%' OR [Description] LIKE '%\"%'",
     .sentence = "Scrap reason % (%) has a quote in it; tools cannot be scrapped for it.",
     .fields = "[ID], [Description]"},
};
