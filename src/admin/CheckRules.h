#pragma once

/// A kind of fault that rows of a table may have, in the engine's native language.
struct RowCheck {
    const char *table;
    /// Which rows have the fault: what stands behind WHERE, with a GROUP BY where one sentence tells of several rows.
    const char *condition;
    /// What is said of each; its %d and %s stand for `fields`.
    const char *sentence;
    const char *fields;
    /// What mends all of them where that is safe: what stands behind SET.
    const char *change = nullptr;
    /// What is said of each once it is mended.
    const char *mended = nullptr;
};

/// In the order in which they are looked for: no change brings up a fault of a row above it again. A scrapped tool that
/// names a deleted type, location or reason is no fault, nor is a loan of a scrapped tool: the program leaves them so.
inline constexpr RowCheck rowChecks[] = {
    {.table = "Types",
     .condition = "Parent IS NOT 0 AND NOT EXISTS (SELECT 1 FROM Types P WHERE P.ID = Types.Parent)",
     .sentence = "Type %d \"%s\" lies below type %d, which does not exist; the tree does not show it.",
     .fields = "ID, Description, Parent",
     .change = "Parent = 0",
     .mended = "Moved to the top level."},
    {.table = "Locations",
     .condition = "Parent IS NOT 0 AND NOT EXISTS (SELECT 1 FROM Locations P WHERE P.ID = Locations.Parent)",
     .sentence = "Location %d \"%s\" lies below location %d, which does not exist; the tree does not show it.",
     .fields = "ID, Description, Parent",
     .change = "Parent = 0",
     .mended = "Moved to the top level."},

    {.table = "CheckOutIn",
     .condition = "Active <> 0 AND Tool_Id NOT IN (SELECT ID FROM Tools) AND Tool_Id IN (SELECT ToolID FROM Scrap)",
     .sentence = "Loan %d of tool %d \"%s\" is still open, but the tool is scrapped.",
     .fields = "ID, Tool_Id, CheckOutDesc",
     .change = "Active = 0, DateIn = (SELECT max(ScrapDate) FROM Scrap WHERE ToolID = Tool_Id)",
     .mended = "Closed as of the day it was scrapped."},
    {.table = "CheckOutIn",
     .condition = "Active <> 0 AND EXISTS (SELECT 1 FROM CheckOutIn Later WHERE Later.Tool_Id = CheckOutIn.Tool_Id AND "
                  "Later.Active <> 0 AND (ifnull(Later.DateOut, ''), Later.ID) > (ifnull(CheckOutIn.DateOut, ''), "
                  "CheckOutIn.ID))",
     .sentence = "Loan %d of tool %d \"%s\" is still open, but the tool has gone out again since.",
     .fields = "ID, Tool_Id, CheckOutDesc",
     .change = "Active = 0, DateIn = (SELECT min(Later.DateOut) FROM CheckOutIn Later WHERE Later.Tool_Id = "
               "CheckOutIn.Tool_Id AND (Later.DateOut, Later.ID) > (ifnull(CheckOutIn.DateOut, ''), CheckOutIn.ID))",
     .mended = "Closed as of the next loan."},
    {.table = "Tools",
     .condition = "Out <> 0 AND NOT EXISTS (SELECT 1 FROM CheckOutIn WHERE Tool_Id = Tools.ID AND Active <> 0)",
     .sentence = "Tool %d \"%s\" is marked as out, but has no open loan.",
     .fields = "ID, Description",
     .change = "Out = 0",
     .mended = "Marked as in the crib."},
    {.table = "Tools",
     .condition = "Out = 0 AND EXISTS (SELECT 1 FROM CheckOutIn WHERE Tool_Id = Tools.ID AND Active <> 0)",
     .sentence = "Tool %d \"%s\" has an open loan, but is not marked as out.",
     .fields = "ID, Description",
     .change = "Out = -1",
     .mended = "Marked as out."},

    {.table = "CheckOutIn",
     .condition = "Tool_Id NOT IN (SELECT ID FROM Tools UNION SELECT ToolID FROM Scrap WHERE ToolID IS NOT NULL) GROUP "
                  "BY Tool_Id",
     .sentence = "Tool %d \"%s\" has %d loans (%d open), but is neither in the crib nor scrapped; purging a scrap "
                 "record deletes the tool of the record's own number as well.",
     .fields = "Tool_Id, min(CheckOutDesc), count(*), sum(Active <> 0)"},
    {.table = "Tools",
     .condition = "Type NOT IN (SELECT ID FROM Types)",
     .sentence = "Tool %d \"%s\" is of type %d, which does not exist.",
     .fields = "ID, Description, Type"},
    {.table = "Tools",
     .condition = "Location NOT IN (SELECT ID FROM Locations)",
     .sentence = "Tool %d \"%s\" is in location %d, which does not exist.",
     .fields = "ID, Description, Location"},
    // A loan has the number as text, in old files with zeros before it; statements compare the two by value.
    {.table = "CheckOutIn",
     .condition = "ifnull(ltrim(Employee, ' 0'), '') NOT IN (SELECT ltrim(EmpID, '0') FROM Employee) GROUP BY Employee",
     .sentence = "Employee \"%s\" does not exist, but has loans: %d.",
     .fields = "Employee, count(*)"},
    {.table = "Scrap",
     .condition = "ifnull(Employee, 0) NOT IN (SELECT EmpID FROM Employee) GROUP BY Employee",
     .sentence = "Employee \"%s\" does not exist, but has scrapped tools: %d.",
     .fields = "Employee, count(*)"},
    {.table = "CheckOutIn",
     .condition = "ifnull(LineItemTypeId, 0) NOT IN (SELECT [Index] FROM LineItemType) GROUP BY LineItemTypeId",
     .sentence = "There is no kind of charge %d, but loans have it: %d.",
     .fields = "LineItemTypeId, count(*)"},
    {.table = "Scrap",
     .condition = "LineItemTypeId IS NULL",
     .sentence = "Scrap record %d \"%s\" has no kind of charge; the tree of scrapped tools ends there.",
     .fields = "ID, Description"},
    {.table = "Scrap",
     .condition = "LineItemTypeId NOT IN (SELECT [Index] FROM LineItemType)",
     .sentence = "Scrap record %d \"%s\" has the kind of charge %d, which does not exist; the tree of scrapped tools "
                 "ends there.",
     .fields = "ID, Description, LineItemTypeId"},
    {.table = "CheckOutIn",
     .condition = "LineItemTypeId = 4 AND ifnull(JobOrOH, 0) NOT IN (SELECT JobNo FROM Job UNION SELECT ifnull(Jobno, "
                  "0) FROM JobVorlane) GROUP BY JobOrOH",
     .sentence = "There is no job %d, but loans are charged to it: %d.",
     .fields = "JobOrOH, count(*)"},
    // Where an operation is called by a number, as "9120", a loan on it is stored with that number instead of its own.
    {.table = "CheckOutIn",
     .condition = "LineItemTypeId = 5 AND ifnull(JobOrOH, 0) NOT IN (SELECT OperNo FROM Operation) AND CAST(JobOrOH AS "
                  "TEXT) NOT IN (SELECT ifnull(Description, '') FROM Operation) GROUP BY JobOrOH",
     .sentence = "There is no operation %d, but loans are charged to it: %d.",
     .fields = "JobOrOH, count(*)"},
    // Without the suite a scrapped tool is charged to a row of the program's own job list, by the row's number.
    {.table = "Scrap",
     .condition = "LineItemTypeId = 4 AND ifnull(JobOrOH, 0) NOT IN (SELECT JobNo FROM Job UNION SELECT ID FROM "
                  "JobVorlane UNION SELECT ifnull(Jobno, 0) FROM JobVorlane) GROUP BY JobOrOH",
     .sentence = "There is no job %d, but scrapped tools are charged to it: %d.",
     .fields = "JobOrOH, count(*)"},
    {.table = "Scrap",
     .condition = "LineItemTypeId = 5 AND ifnull(JobOrOH, 0) NOT IN (SELECT OperNo FROM Operation) GROUP BY JobOrOH",
     .sentence = "There is no operation %d, but scrapped tools are charged to it: %d; the tree of scrapped tools "
                 "cannot be shown.",
     .fields = "JobOrOH, count(*)"},
    {.table = "Scrap",
     .condition = "JobOrOH IS NOT NULL GROUP BY JobOrOH HAVING count(DISTINCT LineItemTypeId) > 1",
     .sentence = "Tools were scrapped on a job and on an operation of the same number %d; the tree of scrapped tools "
                 "cannot be shown.",
     .fields = "JobOrOH"},

    {.table = "Types",
     .condition = "ID NOT BETWEEN 1 AND 32767",
     .sentence = "Type %d \"%s\" has a number outside 1 to 32767; the tree cannot show it, nor what lies in it.",
     .fields = "ID, Description"},
    {.table = "Locations",
     .condition = "ID NOT BETWEEN 1 AND 32767",
     .sentence = "Location %d \"%s\" has a number outside 1 to 32767; the tree cannot show it, nor what lies in it.",
     .fields = "ID, Description"},
    {.table = "Tools",
     .condition = "ID NOT BETWEEN 1 AND 32767",
     .sentence = "Tool %d \"%s\" has a number outside 1 to 32767; it cannot be lent or scrapped.",
     .fields = "ID, Description"},
    {.table = "Scrap",
     .condition = "ToolID NOT BETWEEN 1 AND 32767",
     .sentence = "Scrap record %d \"%s\" is of tool %d, a number outside 1 to 32767; restored, it could not be lent.",
     .fields = "ID, Description, ToolID"},
    {.table = "Scrap",
     .condition = "ID IN (SELECT ID FROM Tools)",
     .sentence = "Scrap record %d \"%s\" has the number of a tool in the crib; purging the record would delete that "
                 "tool as well.",
     .fields = "ID, Description",
     .change = "ID = ID + (SELECT max(16383, max(seq)) FROM sqlite_sequence WHERE name IN ('Tools', 'Scrap'))",
     .mended = "Given a number that no tool has."},
    {.table = "Scrap",
     .condition = "ToolID IN (SELECT ID FROM Tools)",
     .sentence = "Scrap record %d \"%s\" is of tool %d, which is in the crib; it cannot be restored, and purging it "
                 "would delete that tool's loans.",
     .fields = "ID, Description, ToolID"},

    {.table = "Types",
     .condition = "Description GLOB '*[''\"]*'",
     .sentence = "Type %d (%s) has a quote in its name; queries by that name may fail.",
     .fields = "ID, Description"},
    {.table = "Locations",
     .condition = "Description GLOB '*[''\"]*'",
     .sentence = "Location %d (%s) has a quote in its name; queries by that name may fail.",
     .fields = "ID, Description"},
    {.table = "Tools",
     .condition = "Description || ifnull(Manufacturer, '') || ifnull(PartNumber, '') GLOB '*[''\"]*'",
     .sentence = "Tool %d (%s, %s, %s) has a quote in its description, manufacturer or part number; lists and queries "
                 "by it may fail.",
     .fields = "ID, Description, Manufacturer, PartNumber"},
    {.table = "ScrapReasons",
     .condition = "Description GLOB '*[''\"]*'",
     .sentence = "Scrap reason %d (%s) has a quote in it; tools cannot be scrapped for it.",
     .fields = "ID, Description"},
};
