#pragma once

#include "db/Session.h"
#include "tests/support/BothEngines.h"
#include "tests/support/EmptyCrib.h"

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
        Session::open(path());
        insert("Types (Description,Parent)", {"'Wrenches',0", "'Torque wrenches',1"});
        insert("Locations (Description,Parent)", {"'Cabinet A',0", "'Cabinet B',0"});
        insert("Employee (EmpID,LastName,FirstName,EmpStatus)",
               {"17,'Miller','Anna','Active'", "18,'Miller','Anna','Active'", "21,'Baker','Tom','Active'",
                "30,'Young','Zoe','Left'"});
        insert("Job (JobNo,Shipped)", {"900,-1", "1250,0", "12500,0"});
        insert("JobVorlane (Jobno)", {"7001", "7002"});
        insert("Operation (OperNo,Description,OperType)",
               {"10,'Cleaning','O'", "11,'Repair','O'", "12,'2024','O'", "13,'Milling','M'"});
        insert("ScrapReasons (Description)", {"'Broken'", "'Lost'"});
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

    /// Likewise, without looking after relations: a folder may hang on nothing afterwards.
    void damage(const QStringList &statements)
    {
        const WithoutRelations unchecked(Session::database());
        run(statements);
    }

    /// Adds rows; `into` names the table and its columns, each row is written as behind VALUES.
    void insert(const QString &into, const QStringList &rows)
    {
        QStringList statements;
        for (const QString &row : rows)
            statements.append("INSERT INTO " + into + " VALUES(" + row + ')');
        run(statements);
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
    const EmptyCrib m_crib{path()};
};
