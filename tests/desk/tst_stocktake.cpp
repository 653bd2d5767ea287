#include "common/ProgramState.h"
#include "desk/Desk.h"
#include "desk/StockTakeReport.h"
#include "platform/reportcontrol/ReportControl.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/Files.h"

#include <QTest>

/// A count of Cabinet A, whose drawer 3 holds a tool as well.
class TestStockTake : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        folder.emplace();
        ProgramState::SuiteInstalled = true;
        ProgramFolder::setPath(folder->path());
        now = QDateTime({2026, 3, 4}, {13, 5, 0});
        Clock::setSource([this] { return now; });
        crib->insert("Locations (Description,Parent)", {"'Drawer',1"});
        // 4 is out, 6 is scrapped
        crib->insert("Tools (Type,Location,PartNumber,Description,Out)",
                     {"2,1,'TW-40','Torque wrench',0", "2,3,'TW-60','Torque wrench, long',0", "1,2,'GA-1','Gauge',0",
                      "1,1,'DR-5','Drill',-1", "1,1,'TA-6','Tap',0"});
        crib->insert("CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,Active)", {"4,'21',1250,4,-1"});
        crib->insert("Scrap (ToolID,Description,ScrapDate)", {"6,'File','2026-02-01 08:00:00'"});
        desk.emplace();
        scan({"COUNT", "L1"});
    }
    void cleanup()
    {
        desk.reset();
        Clock::setSource({});
        ProgramFolder::setPath({});
        crib.reset();
    }

    void results_data()
    {
        row("right", QStringList{"T1"}, "T1 Torque wrench is right here.", "1 of 3");
        row("right, below the location", QStringList{"t2"}, "T2 Torque wrench, long is right here.", "1 of 3");
        row("belongs elsewhere", QStringList{"T3"}, "T3 Gauge belongs to Cabinet B. Store it here, or leave it.",
            "0 of 3, 1 elsewhere");
        row("elsewhere within the count is not missing", QStringList{"L3", "T1"},
            "T1 Torque wrench belongs to Cabinet A. Store it here, or leave it.", "1 of 3, 1 elsewhere");
        row("out", QStringList{"T4"}, "T4 Drill is out on loan to BAKER TOM. Take it back, or leave it.",
            "0 of 3, 1 out");
        row("scrapped", QStringList{"T6"},
            "T6 File was scrapped on 2026-02-01. Restore it in the tool explorer, or put it away.",
            "0 of 3, 1 scrapped");
        row("unknown tool", QStringList{"T77"}, "T77 is unknown. Put it aside; it is noted.", "0 of 3, 1 unknown");
        row("unknown text", QStringList{"4006381333931X"}, "4006381333931X is unknown. Put it aside; it is noted.",
            "0 of 3, 1 unknown");
        row("by its part number", QStringList{"TA-6"}, "T5 Tap is right here.", "1 of 3");
        row("twice", QStringList{"T1", "T1"}, "T1 Torque wrench is counted already.", "1 of 3");
        row("twice, and left in between", QStringList{"T3", "T1", "T3"},
            "T3 Gauge is counted already, and belongs to Cabinet B. Store it here, or leave it.",
            "1 of 3, 1 elsewhere");
        row("not counted after all", QStringList{"T1", "T2", "T5", "UNDO", "(2)", "UNDO"},
            "T2 Torque wrench, long is not counted after all.", "1 of 3");
        row("no lending in between", QStringList{"E21"}, "Cabinet A is being counted. Scan DONE first.", "0 of 3");
        row("a location outside", QStringList{"L2"}, "Cabinet B is not in Cabinet A. To count it, scan COUNT first.",
            "0 of 3");
        row("the next one, by its name", QStringList{"T1", "COUNT", "net b"}, "Cabinet B: 0 of 1.", "0 of 1");
        row("the result", QStringList{"T1", "DONE"},
            "Cabinet A: 1 of 3. Print it; DONE again finishes it, COUNT counts on.", "1 of 3");
    }
    void results()
    {
        const auto [scanned, said, summary] = fetched<QStringList, QString, QString>();
        QCOMPARE(scan(scanned), said);
        QCOMPARE(desk->stockTake()->summary(), summary);
        QCOMPARE(crib->rows("Select Out,Location from Tools order by ID"),
                 QStringList({"0|1", "0|3", "0|2", "-1|1", "0|1"})); // seeing changes nothing
    }

    void offers()
    {
        scan({"T3"});
        QCOMPARE(words(desk->accept()), "T3 Gauge belongs to Cabinet A from now on.");
        QCOMPARE(crib->rows("Select Location from Tools where ID=3"), QStringList("1"));
        scan({"T1", "UNDO"}); // a count's marks and its deeds, last first
        QCOMPARE(crib->rows("Select Location from Tools where ID=3"), QStringList("1"));
        scan({"(2)", "UNDO"});
        QCOMPARE(crib->rows("Select Location from Tools where ID=3"), QStringList("2"));
        QCOMPARE(desk->stockTake()->number(StockTake::Elsewhere), 1);

        scan({"T4"});
        QCOMPARE(words(desk->accept()), "T4 Drill is back, from BAKER TOM.");
        QCOMPARE(crib->rows("Select Out from Tools where ID=4"), QStringList("0"));
        QCOMPARE(desk->stockTake()->summary(), "1 of 4, 1 elsewhere");
        QVERIFY(desk->accept().isEmpty()); // offered once
        scan({"T5", "L3"}); // what is ticked may lie in any drawer
        QCOMPARE(words(desk->tick(1)), "T1 Torque wrench is ticked.");
        QCOMPARE(desk->stockTake()->summary(), "3 of 4, 1 elsewhere");
    }

    // A key answers what was shown when it was pressed, once.
    void offersWhileTheCribIsHeld()
    {
        const auto other = Workspace::first().openDatabase(crib->path());
        dontWaitForOthers(Session::database());
        scan({"T4"});
        holdAll(*other);
        desk->accept();
        QVERIFY(desk->accept().isEmpty() && desk->leave().isEmpty());
        scan({"T3"});
        other->executeNative("ROLLBACK");
        desk->goOn();
        QCOMPARE(crib->rows("Select Out,Location from Tools where ID in (3,4) order by ID"),
                 QStringList({"0|2", "0|1"}));
    }

    // What somebody else did between the question and the answer holds.
    void offerThatIsNoMore()
    {
        scan({"T3"});
        crib->run({"Update Tools set Location=3 where ID=3"});
        QCOMPARE(words(desk->accept()), "The tool was moved or deleted meanwhile.");
        QCOMPARE(crib->rows("Select Location from Tools where ID=3"), QStringList("3"));
        scan({"T4"});
        QCOMPARE(desk->stockTake()->summary(), "1 of 4, 1 out"); // T3 belongs here, whoever moved it
        crib->run(
            {"Update CheckOutIn set Active=0", "INSERT INTO CheckOutIn (Tool_Id,Employee,Active) VALUES(4,'17',-1)"});
        QCOMPARE(words(desk->accept()), "The tool was checked in meanwhile and is out again: MILLER ANNA has it.");
    }

    void isTakenUpAgain()
    {
        scan({"L3", "T2", "T1", "UNDO", "T77"});
        QFile kept(folder->filePath("stocktake-1.json"));
        QVERIFY(kept.open(QIODevice::Append)
                && kept.write("{\"key\":\"5\",\"seen\":{\"result\":\"ri") > 0); // the power failed
        kept.close();
        QCOMPARE(desk->scan("L9999999999").last().tone, Answer::Refused);
        Desk other;
        other.scan("COUNT");
        QVERIFY(words(other.scan("L1")).startsWith("Another desk is counting Cabinet A"));
        desk.emplace(); // as after a crash
        const Answer begun = desk->scan("COUNT").last();
        QCOMPARE(begun.choices.value(0).code, (Code{Code::Location, 1}));
        QCOMPARE(words(desk->take(begun.choices[0].code)), "Cabinet A: 1 of 3, 1 unknown.");
        QCOMPARE(desk->stockTake()->hereName(), "Cabinet A / Drawer");
        scan({"DONE"});
        QCOMPARE(words(desk->putAside()),
                 "Cabinet A: 1 of 3, 1 unknown. The count is put aside; COUNT goes on with it.");
        QCOMPARE(other.scan("L1").last().tone, Answer::Done); // no lock is left
        other.take({Code::Done});
        other.putAside();

        const QString away = folder->filePath("away");
        scan({"(5)", "COUNT", "L1", "T1"});
        QVERIFY(QFile::rename(kept.fileName(), away)
                && QDir().mkpath(kept.fileName())); // can be neither written nor deleted as a file
        QVERIFY(scan({"(5)", "UNDO"}).startsWith("This could not be kept"));
        QCOMPARE(desk->stockTake()->summary(), "2 of 3, 1 elsewhere, 1 unknown");
        QVERIFY(scan({"DONE", "(5)", "DONE"}).startsWith("Cabinet A was not finished"));
        QVERIFY(desk->stockTake() && QDir().rmdir(kept.fileName()) && QFile::rename(away, kept.fileName()));
        scan({"(5)", "DONE"});
        QVERIFY(!desk->stockTake());
        QVERIFY(StockTake::unfinished().isEmpty());
        QCOMPARE(QDir(folder->path()).entryList(QDir::Files), QStringList());

        writeFile(folder->filePath("stocktake-1.json"), "{ \"version\": 1, ");
        QVERIFY(scan({"COUNT", "L1"}).startsWith("What is kept of the count of Cabinet A cannot be read"));
        QVERIFY(!desk->stockTake() && QFile::exists(folder->filePath("stocktake-1.json")));
    }

    void resultAsFile()
    {
        scan({"T1", "T3", "T4", "T77", "DONE"});
        QVERIFY(QFile::copy(PROGRAM_DATA "/templates/StockTake.rpt", folder->filePath("StockTake.rpt")));
        QWidget owner;
        StockTakeReport result(*desk->stockTake(), &owner);
        result.control().destination = ReportControl::toFile;
        result.control().outputFile = folder->filePath("result.csv");
        QCOMPARE(result.control().print(), 0);
        const QString csv = QString::fromUtf8(contentOf(folder->filePath("result.csv")));
        for (const char *line : {"Missing,T5,Tap,TA-6,Cabinet A", "T2,\"Torque wrench, long\"",
                                 "T3,Gauge,GA-1,Cabinet B", "T4,Drill,DR-5,BAKER TOM", "T77"})
            QVERIFY2(csv.contains(line), qPrintable(csv));
        result.control().outputFile = folder->filePath("result.pdf");
        QCOMPARE(result.control().print(), 0);
    }

private:
    static QString words(const QList<Answer> &answers) { return answers.isEmpty() ? QString() : answers.last().words; }
    QString scan(const QStringList &texts)
    {
        QString said;
        for (const QString &text : texts) {
            if (text.startsWith('('))
                now = now.addSecs(text.mid(1).chopped(1).toInt());
            else
                said = words(desk->scan(text));
        }
        return said;
    }

    std::optional<CribDatabase> crib;
    std::optional<QTemporaryDir> folder;
    std::optional<Desk> desk;
    QDateTime now;
};

QTEST_MAIN(TestStockTake)
#include "tst_stocktake.moc"
