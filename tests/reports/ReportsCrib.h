#pragma once

#include "platform/system/ProgramFolder.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/FakeFrame.h"
#include "tests/support/Files.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"

/// A crib with a few loans, tools and scrapped tools, a main window of 1000 by 700, and a program's folder with report
/// templates in it.
class ReportsCrib : public CribDatabase
{
public:
    ReportsCrib()
    {
        ProgramFolder::setPath(folder.path());
        frame.resize(1000, 700);
        insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer)",
               {"1,1,'Hilti','P-1','Drill',99.5", "2,2,'Bosch','P-2','Wrench',12.25", "2,1,'Bosch','P-3','Saw',25"});
        insert(loans,
               {"1,'P-1','Drill',17,1250,4,#2026-03-01 08:00:00#,#2026-03-02 09:30:00#",
                "1,'P-1','Saw',21,12500,4,#2026-03-02 23:59:59#,Null",
                "1,'P-1','Drill',18,10,5,#2026-03-04 10:00:00#,Null",
                "1,'P-1','Wrench',17,1250,4,#2026-03-04 11:00:00#,#2026-03-04 12:00:00#"});
        const QString scrap = "'Chisel','C-1',17,1250,4,1,#2026-03-03 14:00:00#,%1,#2026-03-03#";
        insert("Scrap (Description,PartNumber,Employee,JobOrOH,LineItemTypeId,Reason,ScrapDate,Job,Date)",
               {scrap.arg(1250), scrap.arg(900), scrap.arg("Null")});
    }
    ~ReportsCrib() { ProgramFolder::setPath({}); }

    /// For insert(): what a further loan needs.
    static constexpr auto loans =
        "CheckOutIn (Tool_Id,CheckOutPartNo,CheckOutDesc,Employee,JobOrOH,LineItemTypeId,DateOut,DateIn)";
    /// A template that prints a line for each record of `tables`.
    void addTemplate(const QString &file, const QByteArray &tables, const QByteArray &line) const
    {
        writeFile(folder.filePath(file), simpleTemplate(tables, line));
    }

    QTemporaryDir folder;
    FakeFrame frame;
};
