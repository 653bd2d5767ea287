#include "tests/support/CribWithTool.h"
#include "tests/support/DataRows.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/ToolCommands.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"
#include "transactions/frmScrap.h"

/// Tools go out and come back.
class TestLending : public QObject
{
    Q_OBJECT

private slots:
    void init() { crib.emplace(); }
    void cleanup() { crib.reset(); }

    void storesLoan_data()
    {
        columns<bool, QString, QString, QString, QString>("suite", "jobType", "offered", "job", "charged");
        row("job of the suite, newest first", true, "Job", "12500 1250", "12500", "12500|4");
        row("job of the own list by its number, not its row", false, "Job", "7002 7001", "7002", "7002|4");
        row("overhead by the operation's number", true, "Overhead", "2024 Cleaning Repair", "Repair", "11|5");
        row("overhead described by digits as that number", true, "Overhead", "2024 Cleaning Repair", "2024", "2024|5");
    }

    void storesLoan()
    {
        const auto [suite, jobType, job, charged] =
            fetched<bool, QString, QString, QString>("suite", "jobType", "job", "charged");
        ProgramState::SuiteInstalled = suite;
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            QCOMPARE(form.ui.lblDate->text(), "Mar-04-2026 13:05");
            QCOMPARE(form.ui.lblLocation->text(), "Cabinet A");
            QCOMPARE(textsOf(form.ui.dbcEmp->model()), QStringList({"BAKER TOM", "MILLER ANNA", "MILLER ANNA"}));
            fill(form, "Baker Tom", jobType == "Job" ? "Overhead" : "Job", {});
            fill(form, "Baker Tom", jobType, job);
            QCOMPARE(form.ui.txtEmpNo->text(), "21");
            QCOMPARE(form.ui.Label2->text(), jobType == "Job" ? "Job Number" : "Overhead Operation");
            QTEST(textsOf(form.ui.dbcJob->model()).join(' '), "offered");
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
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

    void lendingByKeys()
    {
        whenModal<frmCheckOut>([](frmCheckOut &form) {
            // A job number that is whole is that job, though a longer one begins so.
            for (const char *typed : {"21", "j", "1250"}) {
                QTest::keyClicks(QApplication::focusWidget(), typed);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            }
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(crib->rows("Select Employee,JobOrOH from CheckOutIn"), QStringList("21|1250"));
    }

    void refusesIncompleteChoice()
    {
        const QString noJob = "You must select a Job Number or Overhead Description!";
        ScriptedUser user(QMessageBox::Ok, 4);
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            const auto refused = [&](const char *employee, const char *jobType, const char *job) {
                fill(form, employee, jobType, job);
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
        columns<Window, bool, QStringList, QString>("window", "lent", "meanwhile", "message");
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
        const auto [window, lent, meanwhile] = fetched<Window, bool, QStringList>("window", "lent", "meanwhile");
        if (lent)
            crib->lendTo("21");
        ScriptedUser user(QMessageBox::Ok);
        QStringList before;
        window([&] {
            crib->run(meanwhile);
            before = everything();
        });
        QTEST(user.texts().value(0).section('\n', 0, 0), "message");
        QCOMPARE(everything(), before);
        QCOMPARE(crib->explorer.calls, QStringList({"list node", "focus list"}));
    }

    void takesToolBack_data()
    {
        columns<QString, int, QString, QStringList>("mode", "listed", "items", "calls");
        row("in the location view the item stays", "location", 2, "r1 r2", QStringList("focus list"));
        row("from among the tools on loan it goes", "checkedOut", 2, "r2", QStringList("focus list"));
        row("after the last one on loan the view is rebuilt", "checkedOut", 1, "co1",
            QStringList({"rebuild view", "focus list"}));
    }

    void takesToolBack()
    {
        const auto [mode, listed, items] = fetched<QString, int, QString>("mode", "listed", "items");
        FakeExplorer &explorer = crib->explorer;
        crib->lendTo("21");
        crib->insert("CheckOutIn (Tool_Id,Active,DateIn)", {"1,-1,null", "2,-1,null", "1,0,#2025-01-01 08:00:00#"});
        explorer.mode = mode;
        explorer.items.resize(listed);
        whenModal<frmCheckIn>([&](frmCheckIn &form) {
            QCOMPARE(form.ui.lblDescription->text() + form.ui.lblPartNo->text(), "Torque wrenchTW-40");
            QTest::mouseClick(form.ui.cmdOk, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckInSelectedTool();
        // Every open loan of the tool, and no other.
        QCOMPARE(
            crib->rows("Select Tool_Id,Active,DateIn from CheckOutIn order by ID"),
            QStringList({"1|0|2026-03-04 13:05:09", "1|0|2026-03-04 13:05:09", "2|-1|", "1|0|2025-01-01 08:00:00"}));
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
        QStringList keys;
        for (const ListItem &item : explorer.items)
            keys.append(item.key);
        QCOMPARE(keys.join(' '), items);
        if (keys[0] == "r1")
            QCOMPARE(crib->listed(), "r1|6|Torque wrench|TW-40|..\\Torque wrenches|..\\Cabinet A|Acme|");
        QTEST(explorer.calls, "calls");
    }

private:
    using Window = void (*)(const std::function<void()> &meanwhile);

    /// Fills the dialog and presses OK after what others did `meanwhile`; the dialog is closed then.
    template<typename Form>
    static void confirm(const std::function<void()> &meanwhile)
    {
        whenModal<Form>([&](Form &form) {
            if constexpr (!std::is_same_v<Form, frmCheckIn>)
                fill(form, "Baker Tom", "Job", "1250");
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

    template<typename Form>
    static void fill(Form &form, const QString &employee, const QString &jobType, const QString &job)
    {
        form.ui.dbcEmp->setText(employee);
        form.ui.dbcJobType->setText(jobType);
        form.ui.dbcJob->setText(job);
    }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestLending)
#include "tst_lending.moc"
