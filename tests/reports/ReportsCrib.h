#pragma once

#include "platform/system/ProgramFolder.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeFrame.h"

#include <QFile>

/// A crib with a few loans, tools and scrapped tools, a main window of 1000 by 700, and a program's folder with report
/// templates in it.
class ReportsCrib : public CribDatabase
{
public:
    ReportsCrib()
    {
        ProgramFolder::setPath(folder.path());
        frame.resize(1000, 700);
        QStringList rows{
            "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer)"
            " VALUES(1,1,'Hilti','P-1','Drill',99.5)",
            "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer)"
            " VALUES(2,2,'Bosch','P-2','Wrench',12.25)",
            "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer)"
            " VALUES(2,1,'Bosch','P-3','Saw',25)",
            loan("Drill", "17", 1250, 4, "2026-03-01 08:00:00", "2026-03-02 09:30:00"),
            loan("Saw", "21", 12500, 4, "2026-03-02 23:59:59", {}),
            loan("Drill", "18", 10, 5, "2026-03-04 10:00:00", {}),
            loan("Wrench", "17", 1250, 4, "2026-03-04 11:00:00", "2026-03-04 12:00:00"),
        };
        for (const char *job : {"1250", "900", "Null"})
            rows.append(QStringLiteral("INSERT INTO Scrap (Description,PartNumber,Employee,JobOrOH,LineItemTypeId,"
                                       "Reason,ScrapDate,Job,Date) VALUES('Chisel','C-1',17,1250,4,1,"
                                       "#2026-03-03 14:00:00#,%1,#2026-03-03#)")
                            .arg(job));
        run(rows);
    }
    ~ReportsCrib() { ProgramFolder::setPath({}); }

    /// The statement for a further loan; `dateIn` is empty for an open one.
    static QString loan(const QString &description, const QString &employee, int jobOrOH, int kind,
                        const QString &dateOut, const QString &dateIn)
    {
        return QStringLiteral("INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,DateIn,Active,"
                              "CheckOutDesc,CheckOutPartNo) VALUES(1,'%1',%2,%3,#%4#,%5,0,'%6','P-1')")
            .arg(employee)
            .arg(jobOrOH)
            .arg(kind)
            .arg(dateOut, dateIn.isEmpty() ? "Null" : '#' + dateIn + '#', description);
    }
    /// A template that prints a line for each record of `tables`.
    void addTemplate(const QString &file, const QByteArray &tables, const QByteArray &line) const
    {
        QFile written(folder.filePath(file));
        if (!written.open(QIODevice::WriteOnly)
            || written.write("<report version=\"1\"><data>" + tables
                             + "</data><columns><column name=\"a\" width=\"1\"/></columns><detail><line><cell in=\"a\">"
                             + line + "</cell></line></detail></report>")
                < 0)
            qFatal("no template");
    }

    QTemporaryDir folder;
    FakeFrame frame;
};
