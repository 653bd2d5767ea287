#include "tests/support/CribWithTool.h"
#include "transactions/ScrapPurge.h"
#include "transactions/ToolCommands.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"
#include "transactions/frmScrap.h"

/// Tools go out and come back; what commands on the selected tool refuse and purge.
class TestLending : public QObject
{
    Q_OBJECT

private slots:
    void init() { crib.emplace(); }

    void storesLoan_data()
    {
        // A number that is whole is that job, though a longer one begins so.
        row("job of the suite, newest first", true, "Job", "12500 1250", "1250", "1250|4");
        row("job of the own list by its number, not its row", false, "Job", "7002 7001", "7002", "7002|4");
        row("overhead by the operation's number", true, "Overhead", "2024 Cleaning Repair", "Repair", "11|5");
        row("overhead described by digits as that number", true, "Overhead", "2024 Cleaning Repair", "2024", "2024|5");
    }

    void storesLoan()
    {
        const auto [suite, jobType, offered, job, charged] = fetched<bool, QString, QString, QString, QString>();
        ProgramState::SuiteInstalled = suite;
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            QCOMPARE(form.ui.lblDate->text(), "Mar-04-2026 13:05");
            QCOMPARE(form.ui.lblLocation->text(), "Cabinet A");
            QCOMPARE(textsOf(form.ui.dbcEmp->model()), QStringList({"BAKER TOM", "MILLER ANNA", "MILLER ANNA"}));
            const auto type = [](const QString &text) {
                QTest::keyClicks(QApplication::focusWidget(), text);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            };
            form.ui.dbcJobType->setText(jobType == "Job" ? "Overhead" : "Job");
            type("21"); // as it stands on the badge
            type(jobType.left(1));
            QCOMPARE(form.ui.txtEmpNo->text(), "21");
            QCOMPARE(form.ui.Label2->text(), jobType == "Job" ? "Job Number" : "Overhead Operation");
            QCOMPARE(textsOf(form.ui.dbcJob->model()).join(' '), offered);
            type(job);
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(crib->rows("Select Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,DateIn,Active,CheckOutDesc,"
                            "CheckOutPartNo from CheckOutIn"),
                 QStringList("1|21|" + charged + "|2026-03-04 13:05:09||-1|Torque wrench|TW-40"));
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("-1"));
        QCOMPARE(crib->listed(), "co1|1|Torque wrench|TW-40|..\\Torque wrenches|..\\Cabinet A|Acme|BAKER TOM");
        QCOMPARE(crib->explorer.calls, QStringList("focus list"));
    }

    void refusesIncompleteChoice()
    {
        const QString noJob = "You must select a Job Number or Overhead Description!";
        ScriptedUser user(QMessageBox::Ok, 4);
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            const auto refused = [&](const char *employee, const char *jobType, const char *job) {
                CribWithTool::choose(form, employee, jobType, job);
                form.ui.cndCancel->setFocus();
                QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
                return QApplication::focusWidget()->objectName();
            };
            QCOMPARE(refused("Young Zoe", "Job", "1250"), "dbcEmp"); // has left
            QCOMPARE(refused("Baker Tom", "", ""), "dbcJob");
            QCOMPARE(form.ui.Label2->text() + form.ui.dbcJob->itemText(0), QString());
            QCOMPARE(refused("Baker Tom", "Job", "900"), "dbcJob"); // shipped
            form.ui.dbcJob->setText("1250");
            form.ui.dbcJobType->setFocus();
            form.ui.dbcJobType->lineEdit()->selectAll();
            QTest::keyClicks(form.ui.dbcJobType, "over");
            QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier); // leaves the focus where it is
            QTRY_VERIFY(user.done());
            QCOMPARE(form.ui.Label2->text(), "Overhead Operation");
        });
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(user.boxes(),
                 QStringList({remark("You must select an Employee!"), remark(noJob), remark(noJob), remark(noJob)}));
        QCOMPARE(crib->rows("Select out from Tools") + crib->rows("Select ID from CheckOutIn"), QStringList("0"));
        QCOMPARE(crib->explorer.items[0].key, "r1");
    }

    void othersWereFaster_data()
    {
        const QStringList lentToAnna{"Update Tools set out=-1",
                                     "INSERT INTO CheckOutIn (Tool_Id,Employee,Active) VALUES(1,'17',-1)"};
        const QStringList returned{"Update Tools set out=0", "Update CheckOutIn set Active=0"};
        const QStringList scrapped{"Delete from Tools", "INSERT INTO Scrap (ToolID) VALUES(1)"};
        const Window lend = confirm<frmCheckOut>, takeBack = confirm<frmCheckIn>, scrap = confirm<frmScrap>;
        row("lending what is lent", lend, false, lentToAnna, "The tool was checked out meanwhile, by MILLER ANNA.");
        row("lending what is scrapped", lend, false, scrapped, "The tool was scrapped meanwhile.");
        row("taking back what came back", takeBack, true, returned, "The tool was checked in meanwhile.");
        row("taking back what somebody else has", takeBack, true, returned + lentToAnna,
            "The tool was checked in meanwhile and is out again: MILLER ANNA has it.");
        row("taking back what is gone", takeBack, true, QStringList("Delete from Tools"),
            "The tool was deleted meanwhile.");
        row("scrapping what is lent", scrap, false, lentToAnna, "The tool was checked out meanwhile, by MILLER ANNA.");
        row("scrapping what somebody else has", scrap, true, returned + lentToAnna,
            "The tool was checked in meanwhile and is out again: MILLER ANNA has it.");
    }

    void othersWereFaster()
    {
        const auto [window, lent, meanwhile, message] = fetched<Window, bool, QStringList, QString>();
        if (lent)
            crib->lendTo("21");
        ScriptedUser user(QMessageBox::Ok);
        QStringList before;
        window([&] {
            crib->run(meanwhile);
            before = everything();
        });
        QCOMPARE(user.texts().value(0).section('\n', 0, 0), message);
        QCOMPARE(everything(), before);
        QCOMPARE(crib->explorer.calls, QStringList({"list node", "focus list"}));
    }

    // The suite, or a program that was cut off, may have left it so.
    void toolWithoutALoanComesBack()
    {
        crib->lendTo("21");
        crib->run({"Delete from CheckOutIn"});
        confirm<frmCheckIn>([] {});
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
    }

    void commandsRefuse_data()
    {
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
        const auto [command, key, icon, box] = fetched<Command, QString, int, QString>();
        FakeExplorer &explorer = crib->explorer;
        ScriptedUser user(QMessageBox::Ok, !box.isEmpty());
        explorer.items = {{key, "Item", icon}};
        explorer.selected = key.isEmpty() ? -1 : 0;
        QObject thisCommand;
        QTimer::singleShot(0, &thisCommand, [] {
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
        row("a folder is none", "Type", false, "16384", "5 6", "1 5 16384");
        // The tool of the record's number, not the one that was scrapped.
        row("record, loans and the tool of its number", "Tool", false, "", "6", "1 5");
        row("each failure is told and the rest goes on", "Tool", true, "", "5 6", "1 5");
    }

    void purges()
    {
        const auto [icon, kept, scrap, loans, tools] = fetched<QString, bool, QString, QString, QString>();
        crib->insert("Scrap (ToolID,Type,Description,Location)", {"5,2,'Torque wrench',1"});
        crib->insert("CheckOutIn (Tool_Id,Employee,Active)", {"5,'21',0", "6,'21',0"});
        crib->insert("Tools (ID,Type,Location,Description)", {"16384,1,1,'Live'", "5,1,1,'Live'"});
        if (kept)
            refuse(Session::database(), "DELETE", "CheckOutIn");
        ScriptedUser user(QMessageBox::Ok, kept);
        QCOMPARE(MainSubs::PurgeScrapped(icon, 16384), icon == "Tool" && !kept);
        QCOMPARE(user.texts().join("").contains("refused"), kept);
        QCOMPARE(crib->rows("Select ID from Scrap").join(' '), scrap);
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn").join(' '), loans);
        QCOMPARE(crib->rows("Select ID from Tools order by ID").join(' '), tools);
    }

    void takesToolBack_data()
    {
        row("in the location view the item stays", "location", 2, "r1 r2", QStringList("focus list"));
        row("from among the tools on loan it goes", "checkedOut", 2, "r2", QStringList("focus list"));
        row("after the last one on loan the view is rebuilt", "checkedOut", 1, "co1",
            QStringList({"rebuild view", "focus list"}));
    }

    void takesToolBack()
    {
        const auto [mode, listed, items, calls] = fetched<QString, int, QString, QStringList>();
        FakeExplorer &explorer = crib->explorer;
        crib->lendTo("21");
        crib->insert("CheckOutIn (Tool_Id,Active,DateIn)", {"2,-1,null", "1,0,#2025-01-01 08:00:00#"});
        if (!ServerDatabase::isWanted()) // which takes no second one
            crib->insert("CheckOutIn (Tool_Id,Active)", {"1,-1"});
        explorer.mode = mode;
        explorer.items.resize(listed);
        whenModal<frmCheckIn>([&](frmCheckIn &form) {
            QCOMPARE(form.ui.lblDescription->text() + form.ui.lblPartNo->text(), "Torque wrenchTW-40");
            QTest::mouseClick(form.ui.cmdOk, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckInSelectedTool();
        // Every open loan of the tool, and no other.
        QStringList loans = crib->rows("Select Tool_Id,Active,DateIn from CheckOutIn order by ID");
        loans.removeDuplicates();
        QCOMPARE(loans, QStringList({"1|0|2026-03-04 13:05:09", "2|-1|", "1|0|2025-01-01 08:00:00"}));
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
        QStringList keys;
        for (const ListItem &item : explorer.items)
            keys.append(item.key);
        QCOMPARE(keys.join(' '), items);
        if (keys[0] == "r1")
            QCOMPARE(crib->listed(), "r1|6|Torque wrench|TW-40|..\\Torque wrenches|..\\Cabinet A|Acme|");
        QCOMPARE(explorer.calls, calls);
    }

private:
    using Command = void (*)();
    using Window = void (*)(const std::function<void()> &meanwhile);

    /// Fills the dialog and presses OK after what others did `meanwhile`; the dialog is closed then.
    template<typename Form>
    static void confirm(const std::function<void()> &meanwhile)
    {
        whenModal<Form>([&](Form &form) {
            if constexpr (!std::is_same_v<Form, frmCheckIn>)
                CribWithTool::choose(form, "Baker Tom", "Job", "1250");
            if constexpr (std::is_same_v<Form, frmScrap>)
                form.ui.dbcScrapReason->setText("Lost");
            meanwhile();
            QTest::keyClick(&form, Qt::Key_Return);
            QVERIFY(!form.isVisible());
        });
        Form::showModal();
    }

    QStringList everything() const
    {
        return crib->rows("Select ID,out from Tools") + crib->rows("Select Tool_Id,Employee,Active from CheckOutIn")
            + crib->rows("Select ToolID from Scrap");
    }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestLending)
#include "tst_lending.moc"
