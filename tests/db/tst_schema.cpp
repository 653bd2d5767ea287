#include "db/Literals.h"
#include "db/Schema.h"
#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"

#include <QtTest>

/// A new database, closed and opened again the way the program does it.
class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        const QString file = m_folder->filePath("crib.mdb");
        Schema::create(*Workspace::first().createDatabase(file));
        m_database = Workspace::first().openDatabase(file);
    }

    void relationsAreEnforced_data()
    {
        columns<QString, int>("statement", "number");
        row("a type in use stays", "DELETE FROM Types WHERE ID=1", int(EngineError::relatedRecords));
        row("no tool without its type", "INSERT INTO Tools (Type,Location,Description) VALUES (9,1,'Tap')",
            int(EngineError::relatedRecordRequired));
        row("no tool without its location", "UPDATE Tools SET Location=9", int(EngineError::relatedRecordRequired));
        row("no tool without a description", "INSERT INTO Tools (Type,Location) VALUES (1,1)",
            int(EngineError::valueRequired));
    }

    void relationsAreEnforced()
    {
        const auto [statement, number] = fetched<QString, int>("statement", "number");
        m_database->execute("INSERT INTO Types (Description) VALUES ('Drills')");
        m_database->execute("INSERT INTO Locations (Description) VALUES ('Hall')");
        m_database->execute("INSERT INTO Tools (Type,Location,Description) VALUES (1,1,'Drill')");
        // What is left empty takes its default.
        QCOMPARE(m_database->openRecordset("Select * from Types where Parent=0").recordCount(), 1);
        QCOMPARE(m_database->openRecordset("Select * from Tools where Out=0").recordCount(), 1);
        QCOMPARE(errorOf([&] { m_database->execute(statement); }), number);
    }

    void literalsStandForTheirValue()
    {
        const QString name = "O'Neil's \"big\" cabinet; 100 %";
        m_database->execute("INSERT INTO Types (Description) VALUES (" + quoted(name) + ")");
        const QString select = "Select Description from Types where Description=" + quoted(name);
        QCOMPARE(m_database->openRecordset(select).text(u"Description"), name);

        const QDateTime when(QDate(2026, 3, 4), QTime(13, 5, 9));
        m_database->execute("INSERT INTO CheckOutIn (Tool_Id,DateOut) VALUES (1," + dateLiteral(when) + ")");
        QCOMPARE(m_database->openRecordset("Select DateOut from CheckOutIn").text(u"DateOut"), "2026-03-04 13:05:09");
    }

    void scrapNumbersStartHighAndAreNeverGivenTwice()
    {
        m_database->execute("INSERT INTO Scrap (ToolID) VALUES (1)");
        QCOMPARE(m_database->openRecordset("Select ID from Scrap").text(u"ID"), "16384");
        m_database->execute("DELETE FROM Scrap");
        m_database->execute("INSERT INTO Scrap (ToolID) VALUES (1)");
        QCOMPARE(m_database->openRecordset("Select ID from Scrap").text(u"ID"), "16385");
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Database> m_database;
};

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
