#pragma once

#include "db/Schema.h"
#include "db/Session.h"
#include "platform/engine/Workspace.h"

#include <QTemporaryDir>

/// A crib's database in a file of its own, open as the program's session for the life of the object. It holds a few
/// rows of everything that windows ask for, and no tools:
/// - types 1 Wrenches and 2 Torque wrenches (below 1), locations 1 Cabinet A and 2 Cabinet B
/// - employees 17 and 18, both Anna Miller, 21 Tom Baker, and 30 Zoe Young, who has left
/// - jobs 1250 and 12500, and the shipped 900; the program's own list: job 7001 in row 1, 7002 in row 2
/// - overhead operations 10 Cleaning, 11 Repair, 12 called "2024", and 13 Milling, which is none
/// - scrap reasons 1 Broken and 2 Lost
class CribDatabase
{
public:
    CribDatabase()
    {
        {
            const auto database = Workspace::first().createDatabase(path());
            Schema::create(*database);
        }
        Session::open(path());
        run({
            "INSERT INTO Types (Description,Parent) VALUES('Wrenches',0)",
            "INSERT INTO Types (Description,Parent) VALUES('Torque wrenches',1)",
            "INSERT INTO Locations (Description,Parent) VALUES('Cabinet A',0)",
            "INSERT INTO Locations (Description,Parent) VALUES('Cabinet B',0)",
            "INSERT INTO Employee (EmpID,LastName,FirstName,EmpStatus) VALUES(17,'Miller','Anna','Active')",
            "INSERT INTO Employee (EmpID,LastName,FirstName,EmpStatus) VALUES(18,'Miller','Anna','Active')",
            "INSERT INTO Employee (EmpID,LastName,FirstName,EmpStatus) VALUES(21,'Baker','Tom','Active')",
            "INSERT INTO Employee (EmpID,LastName,FirstName,EmpStatus) VALUES(30,'Young','Zoe','Left')",
            "INSERT INTO Job (JobNo,Shipped) VALUES(900,-1)",
            "INSERT INTO Job (JobNo,Shipped) VALUES(1250,0)",
            "INSERT INTO Job (JobNo,Shipped) VALUES(12500,0)",
            "INSERT INTO JobVorlane (Jobno) VALUES(7001)",
            "INSERT INTO JobVorlane (Jobno) VALUES(7002)",
            "INSERT INTO Operation (OperNo,Description,OperType) VALUES(10,'Cleaning','O')",
            "INSERT INTO Operation (OperNo,Description,OperType) VALUES(11,'Repair','O')",
            "INSERT INTO Operation (OperNo,Description,OperType) VALUES(12,'2024','O')",
            "INSERT INTO Operation (OperNo,Description,OperType) VALUES(13,'Milling','M')",
            "INSERT INTO ScrapReasons (Description) VALUES('Broken')",
            "INSERT INTO ScrapReasons (Description) VALUES('Lost')",
        });
    }
    ~CribDatabase() { Session::close(); }
    Q_DISABLE_COPY_MOVE(CribDatabase)

    QString path() const { return m_folder.filePath("dorvak.mdb"); }

    /// In one transaction: each would cost a write to the disk.
    void run(const QStringList &statements)
    {
        Transaction transaction(Session::database());
        for (const QString &statement : statements)
            execute(statement);
        transaction.commit();
    }

    /// Each row of a SELECT: its fields as the user reads them, separated by "|".
    QStringList rows(const QString &statement) const
    {
        const Recordset found = openRecordset(statement);
        QStringList all;
        for (int row = 0; row < found.recordCount(); ++row) {
            QStringList fields;
            for (int column = 0; column < found.fieldCount(); ++column)
                fields.append(found.at(row, column).toText());
            all.append(fields.join('|'));
        }
        return all;
    }

private:
    QTemporaryDir m_folder;
};
