#include "common/ProgramState.h"
#include "desk/Desk.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/Files.h"

#include <QTest>

#include <future>

/// The counter without its window: what a row of scans does in the crib, and what the desk says to each.
class TestDesk : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        ProgramState::SuiteInstalled = true;
        ProgramFolder::setPath(QFileInfo(crib->path()).path());
        now = QDateTime({2026, 3, 4}, {13, 5, 0});
        Clock::setSource([this] { return now; });
        // 1 and 2 in Cabinet A, 3 in Cabinet B
        crib->insert("Tools (Type,Location,PartNumber,Description,Out)",
                     {"2,1,'TW-40','Torque wrench',0", "2,1,'TW-60','Torque wrench, long',0", "1,2,'GA-1','Gauge',0"});
        desk.emplace();
    }
    void cleanup()
    {
        desk.reset();
        Clock::setSource({});
        ProgramFolder::setPath({});
        crib.reset();
    }

    void codes_data()
    {
        row("tool", "t12", int(Code::Tool), 12);
        row("bare number", "0012\r", int(Code::Tool), 12);
        row("command in any case", "uNdO", int(Code::Undo), 0);
        row("part number that begins like a code", "T12X", int(Code::Text), 0);
        row("half a code", "E", int(Code::Unreadable), 0);
        row("more digits than a number has", "T99999999999999999999", int(Code::Tool), -1);
        row("a maker's number", "4006381333931", int(Code::Text), 0);
        row("dirt",
            "T1\x02"
            "2",
            int(Code::Unreadable), 0);
        row("a thousand digits", QString(4000, '7'), int(Code::Unreadable), 0);
    }
    void codes()
    {
        const auto [text, kind, number] = fetched<QString, int, int>();
        const Code code = Code::of(text);
        QCOMPARE(std::pair(int(code.kind), int(code.number)), std::pair(kind, number));
    }

    void templatesPrintThem()
    {
        QSet<QString> known, printed;
        for (const CodeForm &form : codeForms())
            known.insert(form.beginning);
        static const QRegularExpression code("barcode=\"code128\">([A-Z]*)(?:\\{|<)");
        for (const QFileInfo &file : QDir(PROGRAM_DATA "/templates").entryInfoList({"*.rpt"}))
            for (auto it = code.globalMatch(QString::fromUtf8(contentOf(file.filePath()))); it.hasNext();)
                printed.insert(it.next().captured(1));
        QCOMPARE(printed, known);
    }

    // Each scan with the last words said to it; a number in brackets lets so many seconds pass.
    void scans_data()
    {
        const QStringList nothing;
        const QString open = "1|21|1250|4|2026-03-04 13:05:00||-1|Torque wrench|TW-40";
        row("out by tool, badge and job", QStringList{"T1", "E21", "J1250"},
            "Done: T1 Torque wrench is out: BAKER TOM, Job 1250.", QStringList{open}, "-1|0|0");
        row("two waiting tools go out together", QStringList{"E21", "1", "2", "O11"},
            "Done: 2 tools are out: BAKER TOM, Repair.",
            QStringList{"1|21|11|5|2026-03-04 13:05:00||-1|Torque wrench|TW-40",
                        "2|21|11|5|2026-03-04 13:05:00||-1|Torque wrench, long|TW-60"},
            "-1|-1|0");
        row("an operation called by digits is that number", QStringList{"E21", "O12", "T1"},
            "Done: T1 Torque wrench is out: BAKER TOM, 2024.",
            QStringList{"1|21|2024|5|2026-03-04 13:05:00||-1|Torque wrench|TW-40"}, "-1|0|0");
        row("back whoever has it", QStringList{"E21", "J1250", "T1", "DONE", "(60)", "T1"},
            "Done: T1 Torque wrench is back, from BAKER TOM.",
            QStringList{"1|21|1250|4|2026-03-04 13:05:00|2026-03-04 13:06:00|0|Torque wrench|TW-40"}, "0|0|0");
        row("read twice counts once", QStringList{"E21", "J1250", "T1", "(1)", "T1"},
            "Attention: T1 Torque wrench was read twice, and counts once.", QStringList{open}, "-1|0|0");
        row("direction out hands over", QStringList{"E17", "J1250", "T1", "(60)", "E21", "J1250", "OUT", "T1"},
            "Done: T1 Torque wrench is out from MILLER ANNA: BAKER TOM, Job 1250.",
            QStringList{"1|17|1250|4|2026-03-04 13:05:00|2026-03-04 13:06:00|0|Torque wrench|TW-40",
                        "1|21|1250|4|2026-03-04 13:06:00||-1|Torque wrench|TW-40"},
            "-1|0|0");
        row("waiting for the one who has it",
            QStringList{"E21", "J1250", "T1", "DONE", "(60)", "OUT", "T1", "E21", "J1250"},
            "Refused: T1 Torque wrench is out already: BAKER TOM has it.", QStringList{open}, "-1|0|0");
        row("direction in sends no waiting tool out", QStringList{"T1", "IN", "E21", "J1250"},
            "Done: BAKER TOM, Job 1250.", nothing, "0|0|0");
        row("a hand-over is undone as one",
            QStringList{"E17", "J1250", "T1", "(60)", "E21", "J1250", "OUT", "T1", "UNDO"},
            "Done: Undone: T1 Torque wrench.", QStringList{"1|17|1250|4|2026-03-04 13:05:00||-1|Torque wrench|TW-40"},
            "-1|0|0");
        row("direction in lends nothing", QStringList{"E21", "J1250", "IN", "T1"},
            "Attention: T1 Torque wrench is in the crib already.", nothing, "0|0|0");
        row("a lending is undone", QStringList{"E21", "J1250", "T1", "UNDO"}, "Done: Undone: T1 Torque wrench.",
            nothing, "0|0|0");
        row("a return is undone", QStringList{"E21", "J1250", "T1", "DONE", "(60)", "T1", "UNDO"},
            "Done: Undone: T1 Torque wrench.", QStringList{open}, "-1|0|0");
        row("no undoing of another visit", QStringList{"E21", "J1250", "T1", "DONE", "UNDO"},
            "Attention: This visit has nothing to undo.", QStringList{open}, "-1|0|0");
        row("rest ends a visit and its charge", QStringList{"E21", "J1250", "(300)", "T1"},
            "Attention: T1 Torque wrench waits for a badge and a job or an operation.", nothing, "0|0|0");
        row("another person ends the charge", QStringList{"E21", "J1250", "E17", "T1"},
            "Attention: T1 Torque wrench waits for a job or an operation.", nothing, "0|0|0");
        row("another person leaves nothing behind unsaid", QStringList{"E17", "T1", "E21"},
            "Attention: MILLER ANNA: 0 out, 0 back. Not lent, nobody was named or nothing charged: 1 tool. "
            "BAKER TOM: scan a job or an operation.",
            nothing, "0|0|0");
        row("a part number read twice", QStringList{"E21", "J1250", "TW-40", "TW-40"},
            "Attention: T1 Torque wrench was read twice, and counts once.", QStringList{open}, "-1|0|0");
        row("a part number's beginning", QStringList{"E21", "J1250", "tw-4"},
            "Done: T1 Torque wrench is out: BAKER TOM, Job 1250.", QStringList{open}, "-1|0|0");
        row("a description of several", QStringList{"E21", "J1250", "wrench"},
            "Attention: \"wrench\" may be several things. Choose one.", nothing, "0|0|0");
        row("a sign that is a wildcard elsewhere", QStringList{"##-4"},
            "Refused: \"##-4\" is no code, no part number, no description and no name.", nothing, "0|0|0");
        row("a name with an apostrophe and a bracket", QStringList{"O'[Hara"},
            "Refused: \"O'[Hara\" is no code, no part number, no description and no name.", nothing, "0|0|0");
        row("who has left", QStringList{"E30"}, "Refused: Young Zoe is no active employee any more.", nothing, "0|0|0");
        row("shipped job", QStringList{"J900"}, "Refused: There is no open job 900.", nothing, "0|0|0");
        row("a badge of too many digits", QStringList{"E99999999999999999999"},
            "Refused: Nothing has so high a number. Read the label again.", nothing, "0|0|0");
        row("a location whose number wraps around", QStringList{"L4294967297"},
            "Refused: There is no location of so high a number.", nothing, "0|0|0");
        row("unknown tool, scanned again at once", QStringList{"T77", "T77"},
            "Refused: There is no tool T77. Look at its label, or at the tool explorer.", nothing, "0|0|0");
        row("a job without its letter", QStringList{"1250"},
            "Refused: There is no tool T1250. Look at its label, or at the tool explorer. A job begins with J, a badge "
            "with E.",
            nothing, "0|0|0");
    }
    void scans()
    {
        const auto [scanned, said, loans, out] = fetched<QStringList, QString, QStringList, QString>();
        QCOMPARE(scan(scanned), said);
        QCOMPARE(loansNow(), loans);
        QCOMPARE(crib->rows("Select Out from Tools order by ID").join('|'), out);
    }

    // Others write at any time: what was undone, or looked at, may not be so any more.
    void othersWereFaster_data()
    {
        row("undoing what was taken back", QStringList{"E21", "J1250", "T1"},
            QStringList{"Update Tools set Out=0", "Update CheckOutIn set Active=0"}, "UNDO",
            "Refused: T1 Torque wrench was not undone. The tool was checked in meanwhile.");
        row("undoing what is out again", QStringList{"E21", "J1250", "T1", "DONE", "(60)", "T1"},
            QStringList{"Update Tools set Out=-1 where ID=1",
                        "INSERT INTO CheckOutIn (Tool_Id,Employee,Active) VALUES(1,'17',-1)"},
            "UNDO", "Refused: T1 Torque wrench was not undone. The tool was checked out meanwhile, by MILLER ANNA.");
        row("undoing a return of another time", QStringList{"E21", "J1250", "T1", "DONE", "(60)", "T1"},
            QStringList{"Update CheckOutIn set DateIn=#2026-03-05 08:00:00#"}, "UNDO",
            "Refused: T1 Torque wrench was not undone. Its loan was changed meanwhile.");
        row("a tool that waits was lent", QStringList{"T1", "E21"},
            QStringList{"Update Tools set Out=-1 where ID=1",
                        "INSERT INTO CheckOutIn (Tool_Id,Employee,Active) VALUES(1,'17',-1)"},
            "J1250", "Refused: T1 Torque wrench was checked out meanwhile, by MILLER ANNA.");
        row("scanned in the moment it was lent elsewhere", QStringList{"E21", "J1250"},
            QStringList{
                "Update Tools set Out=-1 where ID=1",
                "INSERT INTO CheckOutIn (Tool_Id,Employee,Active,DateOut) VALUES(1,'17',-1,'2026-03-04 13:05:00')"},
            "T1", "Refused: T1 Torque wrench was checked out meanwhile, by MILLER ANNA.");
        row("the same with the direction out", QStringList{"E21", "J1250", "OUT"},
            QStringList{
                "Update Tools set Out=-1 where ID=1",
                "INSERT INTO CheckOutIn (Tool_Id,Employee,Active,DateOut) VALUES(1,'17',-1,'2026-03-04 13:05:00')"},
            "T1", "Refused: T1 Torque wrench was checked out meanwhile, by MILLER ANNA.");
        row("scrapped", QStringList{"E21", "J1250"},
            QStringList{
                "Delete from Tools where ID=1",
                "INSERT INTO Scrap (ToolID,Description,ScrapDate) VALUES(1,'Torque wrench','2026-03-01 08:00:00')"},
            "T1",
            "Refused: T1 Torque wrench was scrapped on 2026-03-01. Restore it in the tool explorer, or put it away.");
    }
    void othersWereFaster()
    {
        const auto [before, meanwhile, last, said] = fetched<QStringList, QStringList, QString, QString>();
        scan(before);
        crib->run(meanwhile);
        const QStringList loans = loansNow();
        QCOMPARE(scan({last}), said);
        QCOMPARE(loansNow(), loans);
    }

    // What was scanned while others hold the crib is done afterwards, in order and once.
    void waitsForTheCrib()
    {
        scan({"E21", "J1250"});
        const auto other = Workspace::first().openDatabase(crib->path());
        dontWaitForOthers(Session::database());
        holdAll(*other);
        QCOMPARE(scan({"T1"}), "Waiting: T1 is kept: the crib is held by somebody else. Scan on.");
        QCOMPARE(scan({"(8)", "T1"}), "Attention: T1 was read twice, and counts once.");
        QCOMPARE(scan({"T2"}), "Waiting: T2 is kept: the crib is held by somebody else.");
        QVERIFY(desk->goOn().isEmpty() && desk->isWaiting());
        other->executeNative("ROLLBACK");
        QCOMPARE(desk->goOn().size(), 2);
        QVERIFY(!desk->isWaiting());
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn order by ID"), QStringList({"1", "2"}));
        QCOMPARE(scan({"T1"}), "Attention: T1 Torque wrench was read twice, and counts once.");
        // What this desk itself did late is no surprise to it.
        QCOMPARE(scan({"(3)", "T1"}), "Done: T1 Torque wrench is back, from BAKER TOM.");

        holdAll(*other);
        scan({"(10)", "T3", "(60)"});
        QCOMPARE(inWords(desk->goOn()),
                 "Refused: Somebody else holds the crib for too long. Not done, scan again: T3.");
        other->executeNative("ROLLBACK");
        QVERIFY(desk->goOn().isEmpty());
        QCOMPARE(loansNow().size(), 2);
    }

    // Its job is known, but it could not go out then.
    void waitsNoMoreInACompleteVisit()
    {
        scan({"T1", "E21"});
        const auto other = Workspace::first().openDatabase(crib->path());
        dontWaitForOthers(Session::database());
        other->executeNative(other->isRemote() ? "BEGIN; LOCK TABLE [CheckOutIn] IN EXCLUSIVE MODE"
                                               : "BEGIN IMMEDIATE");
        scan({"J1250", "(60)"});
        QCOMPARE(inWords(desk->goOn()),
                 "Refused: Somebody else holds the crib for too long. Not done, scan again: J1250.");
        other->executeNative("ROLLBACK");
        QCOMPARE(scan({"T1"}), "Done: T1 Torque wrench is out: BAKER TOM, Job 1250.");
        QVERIFY(desk->toolsWaiting().isEmpty());
    }

    // The end of a deed is asked for, and the connection breaks before the server has answered.
    void lostAtItsEnd_data()
    {
        row("lending", QStringList{"E21", "J1250"}, "Done: T1 Torque wrench is out: BAKER TOM, Job 1250.");
        row("taking back", QStringList{"E17", "J1250", "T1", "DONE", "(60)"},
            "Done: T1 Torque wrench is back, from MILLER ANNA.");
        row("handing over", QStringList{"E17", "J1250", "T1", "(60)", "E21", "J1250", "OUT"},
            "Done: T1 Torque wrench is out from MILLER ANNA: BAKER TOM, Job 1250.");
        row("taking back what nobody has", QStringList{"(no loan)"},
            "Done: T1 Torque wrench is back, from nobody on record.");
    }
    void lostAtItsEnd()
    {
        if (!ServerDatabase::isWanted())
            return; // a file has no connection
        const auto [before, said] = fetched<QStringList, QString>();
        scan(before);
        if (before.contains("(no loan)"))
            crib->run({"Update Tools set Out=-1 where ID=1"});
        const auto state = [&] { return loansNow() + crib->rows("Select Out from Tools order by ID"); };
        const QStringList asItWas = state();

        for (const char *table : {"CheckOutIn", "Tools"})
            Session::database().executeNative(
                QString("CREATE OR REPLACE FUNCTION rest() RETURNS trigger LANGUAGE plpgsql AS "
                        "$$ BEGIN PERFORM pg_sleep(60); RETURN NULL; END $$; "
                        "CREATE CONSTRAINT TRIGGER rest AFTER INSERT OR UPDATE ON [%1] DEFERRABLE INITIALLY DEFERRED "
                        "FOR EACH ROW EXECUTE FUNCTION rest()")
                    .arg(table));
        QCOMPARE(scanWhileCut("T1"),
                 "Refused: T1 Torque wrench was not done: the connection to the crib was lost. Scan it again.");
        Session::database().executeNative("DROP FUNCTION rest CASCADE");
        QCOMPARE(state(), asItWas);

        Session::database().executeNative("SET synchronous_commit = on");
        QCOMPARE(scanWhileCut("T1"), said);
        QVERIFY(state() != asItWas);
        QCOMPARE(scan({"UNDO"}), "Done: Undone: T1 Torque wrench.");
        QCOMPARE(state(), asItWas);
    }

    void sheetOfTheVisit()
    {
        scan({"E21", "J1250", "T1", "T2", "T3", "UNDO"});
        QCOMPARE(desk->loansForSheet().size(), 2);
        scan({"DONE", "E17"});
        QCOMPARE(desk->loansForSheet().size(), 2); // of the visit before, until something is lent
        scan({"J1250", "T3"});
        QCOMPARE(desk->loansForSheet().size(), 1);
        QStringList lines;
        for (const DeedLine &line : desk->takeLines())
            lines.append(line.what + ' ' + line.tool + ' ' + line.side.who);
        QCOMPARE(lines.mid(2),
                 QStringList({"Out T3 Gauge BAKER TOM", "Undone: Out T3 Gauge BAKER TOM", "Out T3 Gauge MILLER ANNA"}));
    }

private:
    // Cuts this desk's connection as soon as the server rests at the end of its change.
    QString scanWhileCut(const QString &text)
    {
        const auto cutter = std::async(std::launch::async, [path = crib->path()] {
            const auto other = Workspace::first().openDatabase(path);
            while (other
                       ->openNative("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = "
                                    "current_database() AND wait_event IN ('SyncRep', 'PgSleep')")
                       .isEmpty()) { }
        });
        return scan({text});
    }
    QString inWords(const QList<Answer> &answers)
    {
        constexpr const char *tones[] = {"Done: ", "Attention: ", "Refused: ", "Waiting: "};
        return answers.isEmpty() ? QString() : tones[answers.last().tone] + answers.last().words;
    }
    QString scan(const QStringList &texts)
    {
        QString said;
        for (const QString &text : texts) {
            if (text.startsWith('('))
                now = now.addSecs(text.mid(1).chopped(1).toInt());
            else
                said = inWords(desk->scan(text));
        }
        return said;
    }
    QStringList loansNow() const
    {
        return crib->rows("Select Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,DateIn,Active,CheckOutDesc,"
                          "CheckOutPartNo from CheckOutIn order by ID");
    }

    std::optional<CribDatabase> crib;
    std::optional<Desk> desk;
    QDateTime now;
};

QTEST_GUILESS_MAIN(TestDesk)
#include "tst_desk.moc"
