#include "tests/support/CribWithTool.h"
#include "tests/support/DataRows.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/MainSubs.h"
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

    void loadShowsToolAndEmployees()
    {
        whenModal<frmCheckOut>([](frmCheckOut &form) {
            QCOMPARE(form.windowTitle(), " Tool Checkout");
            QCOMPARE(form.ui.lblDate->text(), "Mar-04-2026 13:05");
            QCOMPARE(form.ui.lblTool->text(), "Torque wrench");
            QCOMPARE(form.ui.lblLocation->text(), "Cabinet A");
            QVERIFY(form.ui.dbcEmp->hasFocus());
            QCOMPARE(textsOf(form.ui.dbcEmp->model()), QStringList({"BAKER TOM", "MILLER ANNA", "MILLER ANNA"}));
            QCOMPARE(form.ui.dbcEmp->text(), QString());

            // Two employees of the same name stay two.
            form.ui.dbcEmp->setCurrentIndex(1);
            const QString first = form.ui.txtEmpNo->text();
            form.ui.dbcEmp->setCurrentIndex(2);
            QCOMPARE(QSet<QString>({first, form.ui.txtEmpNo->text()}), QSet<QString>({"17", "18"}));
            QVERIFY(form.ui.txtEmpNo->isReadOnly());

            QTest::keyClick(form.ui.dbcEmp, Qt::Key_Escape);
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckOutSelectedTool();
        QVERIFY(!frmCheckOut::isLoaded());
        QVERIFY(!QApplication::overrideCursor());
        nothingIsLent();
    }

    void jobTypeChoosesTheList_data()
    {
        columns<bool, QString, QString, QString, QStringList>("suite", "before", "jobType", "label", "list");
        row("open jobs of the suite, newest first", true, "Overhead", "Job", "Job Number",
            QStringList({"12500", "1250"}));
        row("the own list without the suite", false, "Overhead", "Job", "Job Number", QStringList({"7002", "7001"}));
        row("overhead operations by description", true, "Job", "Overhead", "Overhead Operation",
            QStringList({"2024", "Cleaning", "Repair"}));
        row("nothing for an empty text", true, "Job", "", "", QStringList());
        row("nothing for another text", true, "Job", "Stock", "", QStringList());
    }

    void jobTypeChoosesTheList()
    {
        QFETCH(bool, suite);
        QFETCH(QString, before);
        QFETCH(QString, jobType);
        ProgramState::SuiteInstalled = suite;
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            QCOMPARE(form.ui.Label2->text(), QString());
            form.ui.dbcJobType->setText(before);
            form.ui.dbcJob->setCurrentIndex(0);
            QVERIFY(!form.ui.dbcJob->text().isEmpty());
            form.ui.dbcJobType->setText(jobType);
            QTEST(form.ui.Label2->text(), "label");
            QTEST(textsOf(form.ui.dbcJob->model()), "list");
            QCOMPARE(form.ui.dbcJob->text(), QString());
        });
        frmCheckOut::showModal();
    }

    void lendingByKeys_data()
    {
        columns<QString, Qt::Key>("employee", "next");
        row("a name", "bak", Qt::Key_Tab);
        row("a badge", "21", Qt::Key_Return);
    }

    void lendingByKeys()
    {
        QFETCH(QString, employee);
        QFETCH(Qt::Key, next);
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            QTest::keyClicks(QApplication::focusWidget(), employee);
            QTest::keyClick(QApplication::focusWidget(), next);
            QCOMPARE(form.ui.txtEmpNo->text(), "21");
            QTest::keyClicks(QApplication::focusWidget(), "j");
            QTest::keyClick(QApplication::focusWidget(), next);
            // A job number that is whole is that job, though a longer one begins so.
            QTest::keyClicks(QApplication::focusWidget(), "1250");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(crib->rows("Select Tool_Id,Employee,JobOrOH,LineItemTypeId from CheckOutIn"),
                 QStringList("1|21|1250|4"));
    }

    void storesLoan_data()
    {
        columns<bool, QString, QString, QString>("suite", "jobType", "job", "charged");
        row("job of the suite", true, "Job", "12500", "12500|4");
        row("job of the own list by its number, not its row", false, "Job", "7002", "7002|4");
        row("overhead by the operation's number", true, "Overhead", "Repair", "11|5");
        row("overhead described by digits as that number", true, "Overhead", "2024", "2024|5");
    }

    void storesLoan()
    {
        QFETCH(bool, suite);
        QFETCH(QString, jobType);
        QFETCH(QString, job);
        QFETCH(QString, charged);
        ProgramState::SuiteInstalled = suite;
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            fill(form, "Baker Tom", jobType, job);
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

    void refusesIncompleteChoice_data()
    {
        columns<QString, QString, QString, QString, QString>("employee", "jobType", "job", "message", "focus");
        const QString noEmployee = "You must select an Employee!";
        const QString noJob = "You must select a Job Number or Overhead Description!";
        row("nobody", "", "Job", "1250", noEmployee, "dbcEmp");
        row("a name that is not offered", "Young Zoe", "Job", "1250", noEmployee, "dbcEmp");
        row("no job type", "Baker Tom", "", "", noJob, "dbcJob");
        row("no job", "Baker Tom", "Job", "", noJob, "dbcJob");
        row("a shipped job", "Baker Tom", "Job", "900", noJob, "dbcJob");
    }

    void refusesIncompleteChoice()
    {
        QFETCH(QString, employee);
        QFETCH(QString, jobType);
        QFETCH(QString, job);
        QFETCH(QString, message);
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            fill(form, employee, jobType, job);
            form.ui.cndCancel->setFocus();
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            QVERIFY(form.isVisible());
            QTEST(QApplication::focusWidget()->objectName(), "focus");
        });
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(user.boxes(), QStringList(remark(message)));
        nothingIsLent();
    }

    void jobTypeTypedLastCounts()
    {
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmCheckOut>([&](frmCheckOut &form) {
            fill(form, "Baker Tom", "Job", "1250");
            form.ui.dbcJobType->setFocus();
            form.ui.dbcJobType->lineEdit()->selectAll();
            QTest::keyClicks(form.ui.dbcJobType, "over");
            // The mnemonic leaves the focus where it is.
            QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier);
            QTRY_VERIFY(user.done());
            QCOMPARE(form.ui.Label2->text(), "Overhead Operation");
        });
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(user.texts(), QStringList("You must select a Job Number or Overhead Description!"));
        nothingIsLent();
    }

    void loanThatCannotBeStoredLeavesDialogOpen()
    {
        Session::database().executeNative("CREATE TRIGGER NoLoans BEFORE INSERT ON CheckOutIn"
                                          " BEGIN SELECT RAISE(ABORT, 'no loans today'); END");
        ScriptedUser user(QMessageBox::Ok);
        failToLend();
        QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
        QVERIFY(user.seen[0].text.contains("no loans today"));
        nothingIsLent();
    }

    void toolNumberAboveSixteenBitsIsRefused()
    {
        ScriptedUser user(QMessageBox::Ok);
        crib->explorer.items[0].key = "r32768";
        failToLend();
        QCOMPARE(user.texts(), QStringList("Overflow"));
        QCOMPARE(crib->rows("Select ID from CheckOutIn"), QStringList());
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
        QFETCH(Window, window);
        QFETCH(bool, lent);
        QFETCH(QStringList, meanwhile);
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

    void toolOutWithoutLoanCanBeTakenBack()
    {
        crib->lendTo("21");
        crib->run({"Delete from CheckOutIn"});
        confirm<frmCheckIn>([] {});
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
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
        QFETCH(QString, mode);
        QFETCH(int, listed);
        QFETCH(QString, items);
        FakeExplorer &explorer = crib->explorer;
        crib->lendTo("21");
        explorer.mode = mode;
        explorer.items.resize(listed);
        whenModal<frmCheckIn>([&](frmCheckIn &form) {
            QCOMPARE(form.ui.lblDescription->text(), "Torque wrench");
            QCOMPARE(form.ui.lblPartNo->text(), "TW-40");
            QCOMPARE(form.ui.lblDate->text(), "Mar-04-2026 13:05");
            QTest::mouseClick(form.ui.cmdOk, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        MainSubs::CheckInSelectedTool();
        QCOMPARE(crib->rows("Select DateIn,Active from CheckOutIn"), QStringList("2026-03-04 13:05:09|0"));
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
        QStringList keys;
        for (const ListItem &item : explorer.items)
            keys.append(item.key);
        QCOMPARE(keys.join(' '), items);
        if (keys[0] == "r1")
            QCOMPARE(crib->listed(), "r1|6|Torque wrench|TW-40|..\\Torque wrenches|..\\Cabinet A|Acme|");
        QTEST(explorer.calls, "calls");
    }

    void closesEveryOpenLoanOfTheToolAlone()
    {
        crib->lendTo("21");
        crib->insert("CheckOutIn (Tool_Id,Active,DateIn)", {"1,-1,null", "2,-1,null", "1,0,#2025-01-01 08:00:00#"});
        whenModal<frmCheckIn>([](frmCheckIn &form) { QTest::keyClick(&form, Qt::Key_Return); });
        MainSubs::CheckInSelectedTool();
        QCOMPARE(
            crib->rows("Select Tool_Id,Active,DateIn from CheckOutIn order by ID"),
            QStringList({"1|0|2026-03-04 13:05:09", "1|0|2026-03-04 13:05:09", "2|-1|", "1|0|2025-01-01 08:00:00"}));
    }

    void toolStaysOut_data()
    {
        columns<bool>("locked");
        row("when the dialog is cancelled", false);
        row("when the file is locked", true);
    }

    void toolStaysOut()
    {
        QFETCH(bool, locked);
        crib->lendTo("21");
        ScriptedUser user;
        const auto other = Workspace::first().openDatabase(crib->path());
        whenModal<frmCheckIn>([&](frmCheckIn &form) {
            if (!locked)
                return form.ui.cmdCancel->click();
            Transaction writing(*other);
            other->execute("Update Locations set Description='Cabinet C' where ID=2");
            user.answers(QMessageBox::Ok);
            form.ui.cmdOk->click();
            QVERIFY(form.isVisible());
            QVERIFY(!QApplication::overrideCursor());
            QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
            QVERIFY(!user.seen[0].text.isEmpty());
        });
        MainSubs::CheckInSelectedTool();
        QVERIFY(!frmCheckIn::isLoaded());
        QCOMPARE(crib->rows("Select Active from CheckOutIn"), QStringList("-1"));
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("-1"));
        QCOMPARE(crib->explorer.items[0].key, "co1");
        QCOMPARE(crib->explorer.calls, QStringList());
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

    void failToLend()
    {
        whenModal<frmCheckOut>([](frmCheckOut &form) {
            fill(form, "Baker Tom", "Job", "1250");
            form.ui.cmdOK->click();
            QVERIFY(form.isVisible());
            QVERIFY(!QApplication::overrideCursor());
        });
        MainSubs::CheckOutSelectedTool();
    }

    void nothingIsLent()
    {
        QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
        QCOMPARE(crib->rows("Select ID from CheckOutIn"), QStringList());
        QCOMPARE(crib->explorer.items[0].key, "r1");
    }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestLending)
#include "tst_lending.moc"
