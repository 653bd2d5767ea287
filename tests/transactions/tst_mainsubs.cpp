#include "tests/support/CribWithTool.h"
#include "tests/support/DataRows.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/MainSubs.h"

/// The commands on a selected tool, as far as they open no dialog, and what the dialogs share.
class TestMainSubs : public QObject
{
    Q_OBJECT

private slots:
    void init() { crib.emplace(); }
    void cleanup() { crib.reset(); }

    void commandsRefuse_data()
    {
        columns<Command, QString, int, QString>("command", "key", "icon", "box");
        const Command lend = MainSubs::CheckOutSelectedTool;
        const Command takeBack = MainSubs::CheckInSelectedTool;
        const Command restore = MainSubs::RestoreSelectedScrap;
        const int inStock = ItemIcon::toolInStock, out = ItemIcon::toolOut, scrapped = ItemIcon::toolScrapped;
        const int folder = ItemIcon::folder;

        row("lending what is out", lend, "co1", out,
            "System Message: The selected tool is checked out and cannot be Checked out Again! [OK]");
        row("lending what is scrapped", lend, "j1", scrapped,
            "System Message: The selected tool is scrapped and cannot be Checked Out! [OK]");
        row("lending a folder", lend, "t1", folder, "");
        row("lending nothing", lend, "", 0, remark("Please select a tool to Check Out."));
        row("taking back what is in stock", takeBack, "r1", inStock,
            "System Message: The selected tool is already checked in! [OK] [Cancel]");
        row("taking back what is scrapped", takeBack, "j1", scrapped,
            "System Message: The selected tool is scrapped and must be restored before using! [OK]");
        row("taking back a folder", takeBack, "l1", folder, "");
        row("taking back a folder numbered like a tool", takeBack, "co1", folder, "");
        row("taking back nothing", takeBack, "", 0, remark("Please select a tool to Check In."));
        row("restoring a folder", restore, "s4", folder, "");
        row("restoring nothing", restore, "", 0, remark("Please select a scrapped tool to restore."));
    }

    void commandsRefuse()
    {
        const auto [command, key, icon, box] = fetched<Command, QString, int, QString>("command", "key", "icon", "box");
        FakeExplorer &explorer = crib->explorer;
        ScriptedUser user;
        if (!box.isEmpty())
            user.answers(QMessageBox::Ok);
        explorer.items = {{key, "Item", icon}};
        explorer.selected = key.isEmpty() ? -1 : 0;
        QTimer::singleShot(0, qApp, [] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                QTest::qFail("a dialog came up", __FILE__, __LINE__);
                dialog->reject();
            }
        });
        command();
        QCOMPARE(user.boxes().join('\n'), box);
        // Without a selection the first item is offered, if there is one.
        QCOMPARE(explorer.selected, 0);
        QCOMPARE(explorer.calls, key.isEmpty() && box.contains("Check") ? QStringList("focus list") : QStringList());
        if (!key.isEmpty())
            return;
        explorer.items.clear();
        explorer.selected = -1;
        user.answers(QMessageBox::Ok);
        command();
        QCOMPARE(explorer.selected, -1);
    }

    void purgeTakesRecordLoansAndTheToolOfItsNumber()
    {
        scrapToolFive();
        crib->insert("Tools (ID,Type,Location,Description)", {"16384,1,1,'Live'", "5,1,1,'Live'"});
        QVERIFY(!MainSubs::PurgeScrapped("Type", 16384));
        QCOMPARE(crib->rows("Select ID from Scrap"), QStringList("16384"));

        QVERIFY(MainSubs::PurgeScrapped("Tool", 16384));
        QCOMPARE(crib->rows("Select ID from Scrap"), QStringList());
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList("6"));
        // The record's number, not its tool's.
        QCOMPARE(crib->rows("Select ID from Tools order by ID"), QStringList({"1", "5"}));
    }

    void purgeReportsEachFailureAndGoesOn()
    {
        scrapToolFive();
        Session::database().executeNative("CREATE TRIGGER KeepLoans BEFORE DELETE ON CheckOutIn"
                                          " BEGIN SELECT RAISE(ABORT, 'loans are kept'); END");
        ScriptedUser user(QMessageBox::Ok);
        QVERIFY(!MainSubs::PurgeScrapped("Tool", 16384));
        QVERIFY(user.texts()[0].contains("loans are kept"));
        QVERIFY(user.texts()[0].front().isDigit());
        QCOMPARE(crib->rows("Select ID from Scrap"), QStringList());
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList({"5", "6"}));
    }

    void filterKey()
    {
        QCOMPARE(MainSubs::FilterKey('a', "XYZA", false, ""), int('a')); // in either case
        QCOMPARE(MainSubs::FilterKey('b', "*12", false, ""), 0);
        QCOMPARE(MainSubs::FilterKey('a', "abc", false, "A"), 0);
        QCOMPARE(MainSubs::FilterKey(8, "0123", true, ""), 8);
        QCOMPARE(MainSubs::FilterKey(8, "0123", false, ""), 0);
    }

private:
    using Command = void (*)();

    void scrapToolFive()
    {
        crib->insert("Scrap (ToolID,Type,Description,Location)", {"5,2,'Torque wrench',1"});
        crib->insert("CheckOutIn (Tool_Id,Employee,Active)", {"5,'21',0", "6,'21',0"});
    }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestMainSubs)
#include "tst_mainsubs.moc"
