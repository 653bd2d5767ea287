#include "db/Literals.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"

/// A new database, closed and opened again the way the program does it.
class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void relationsAreEnforced_data()
    {
        row("a type in use stays", "DELETE FROM Types WHERE ID=1", EngineError::relatedRecords);
        row("no tool without its type", "INSERT INTO Tools (Type,Location,Description) VALUES (9,1,'Tap')",
            EngineError::relatedRecordRequired);
        row("no tool without its location", "UPDATE Tools SET Location=9", EngineError::relatedRecordRequired);
        row("no tool without a description", "INSERT INTO Tools (Type,Location) VALUES (1,1)",
            EngineError::valueRequired);
    }

    void relationsAreEnforced()
    {
        const auto [statement, number] = fetched<QString, int>();
        CribDatabase crib;
        crib.insert("Tools (Type,Location,Description)", {"1,1,'Drill'"});
        QCOMPARE(errorOf([&] { crib.run({statement}); }), number);
        // What is left empty takes its default.
        crib.insert("Types (Description)", {"'Taps'"});
        QCOMPARE(crib.rows("Select Parent from Types where ID=3") + crib.rows("Select Out from Tools"),
                 QStringList({"0", "0"}));
    }

    void literalsStandForTheirValue()
    {
        CribDatabase crib;
        const QString name = "O'Neil's \"big\" cabinet; 100 %";
        crib.insert("Types (Description)", {quoted(name)});
        QCOMPARE(crib.rows("Select Description from Types where Description=" + quoted(name)), QStringList(name));
        crib.insert("CheckOutIn (Tool_Id,DateOut)", {"1," + dateLiteral(QDateTime({2026, 3, 4}, {13, 5, 9}))});
        QCOMPARE(crib.rows("Select DateOut from CheckOutIn"), QStringList("2026-03-04 13:05:09"));
    }

    void scrapNumbersStartHighAndAreNeverGivenTwice()
    {
        CribDatabase crib;
        for (const char *number : {"16384", "16385"}) {
            crib.insert("Scrap (ToolID)", {"1"});
            QCOMPARE(crib.rows("Select ID from Scrap"), QStringList(number));
            crib.run({"DELETE FROM Scrap"});
        }
    }
};

QTEST_GUILESS_MAIN(TestSchema)
#include "tst_schema.moc"
