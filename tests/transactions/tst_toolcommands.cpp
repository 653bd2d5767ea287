#include "tests/support/CribWithTool.h"
#include "tests/support/DataRows.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/ScrapPurge.h"
#include "transactions/ToolCommands.h"

/// The commands on a selected tool, as far as they open no dialog, and what the dialogs share.
class TestToolCommands : public QObject
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
    }

    void purges_data()
    {
        columns<QString, bool, QString, QString, QString>("icon", "kept", "scrap", "loans", "tools");
        row("a folder is none", "Type", false, "16384", "5 6", "1 5 16384");
        // The tool of the record's number, not the one that was scrapped.
        row("record, loans and the tool of its number", "Tool", false, "", "6", "1 5");
        row("each failure is told and the rest goes on", "Tool", true, "", "5 6", "1 5");
    }

    void purges()
    {
        const auto [icon, kept] = fetched<QString, bool>("icon", "kept");
        crib->insert("Scrap (ToolID,Type,Description,Location)", {"5,2,'Torque wrench',1"});
        crib->insert("CheckOutIn (Tool_Id,Employee,Active)", {"5,'21',0", "6,'21',0"});
        crib->insert("Tools (ID,Type,Location,Description)", {"16384,1,1,'Live'", "5,1,1,'Live'"});
        if (kept)
            Session::database().executeNative("CREATE TRIGGER KeepLoans BEFORE DELETE ON CheckOutIn"
                                              " BEGIN SELECT RAISE(ABORT, 'loans are kept'); END");
        ScriptedUser user(QMessageBox::Ok, kept);
        QCOMPARE(MainSubs::PurgeScrapped(icon, 16384), icon == "Tool" && !kept);
        QCOMPARE(user.texts().join("").contains("loans are kept"), kept);
        QTEST(crib->rows("Select ID from Scrap").join(' '), "scrap");
        QTEST(crib->rows("Select Tool_Id from CheckOutIn").join(' '), "loans");
        QTEST(crib->rows("Select ID from Tools order by ID").join(' '), "tools");
    }

private:
    using Command = void (*)();

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestToolCommands)
#include "tst_toolcommands.moc"
