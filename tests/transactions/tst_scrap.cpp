#include "tests/support/CribWithTool.h"
#include "transactions/frmScrap.h"

#include <QClipboard>

class TestScrap : public QObject
{
    Q_OBJECT

private slots:
    void init() { crib.emplace(); }

    void movesToolToScrap_data()
    {
        row("job of the suite, newest first", true, "Job", "12500", "1250", "1250|4", 2);
        row("job of the own list by its row", false, "Job", "7002", "7002", "2|4", 2);
        row("overhead by number, though called by digits", true, "Overhead", "Cleaning", "2024", "12|5", 2);
        row("the last tool listed", true, "Overhead", "Cleaning", "Repair", "11|5", 1);
    }

    void movesToolToScrap()
    {
        const auto [suite, jobType, firstJob, job, charged, listed] =
            fetched<bool, QString, QString, QString, QString, int>();
        ProgramState::SuiteInstalled = suite;
        FakeExplorer &explorer = crib->explorer;
        explorer.items.resize(listed);

        whenModal<frmScrap>([&](frmScrap &form) {
            QCOMPARE(form.ui.lblLocation->text(), "..\\Cabinet A");
            form.ui.dbcEmp->setText("Baker Tom");
            QCOMPARE(form.ui.txtEmpNo->text(), "21");
            form.ui.dbcJobType->setText(jobType);
            QCOMPARE(form.ui.Label2->text(), jobType == "Job" ? "Scrapped on Job Number:" : "Overhead Operation");
            QCOMPARE(form.ui.dbcJob->itemText(0), firstJob);
            form.ui.dbcJob->setText(job);
            form.ui.dbcScrapReason->setText("Lost");
            QTest::keyClicks(form.ui.txtNotes, "Fell off");
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        frmScrap::showModal();
        QCOMPARE(crib->rows("Select ToolID,Type,TypeDescription,Manufacturer,PartNumber,Description,PricePer,Employee,"
                            "ScrapDate,Reason,Location,Notes,JobOrOH,LineItemTypeId from Scrap"),
                 QStringList("1|2|Torque wrenches|Acme|TW-40|Torque wrench|129.5|21|2026-03-04 13:05:09|2|1|Fell off|"
                             + charged));
        QCOMPARE(crib->rows("Select ID from Tools"), QStringList());
        QCOMPARE(explorer.items.size(), listed - 1);
        QCOMPARE(explorer.calls, listed > 1 ? QStringList("focus list") : QStringList({"rebuild view", "focus list"}));
    }

    void loanFillsTheDialog_data()
    {
        row("job of the own list, found by its number", false, "21", "7002", 4, "BAKER TOM 21 Job 7002");
        row("the namesake who has it", true, "18", "11", 5, "MILLER ANNA 18 Overhead Repair");
        row("not the namesake of a borrower who left", true, "30", "1250", 4, "YOUNG ZOE  Job 1250");
        row("a shipped job", true, "21", "900", 4, "BAKER TOM 21 Job 900");
        row("an unknown operation is none", true, "21", "2024", 5, "BAKER TOM 21 Overhead ");
        row("an unknown kind of charge", true, "21", "1250", 9, "BAKER TOM 21  ");
    }

    void loanFillsTheDialog()
    {
        const auto [suite, employee, jobOrOH, lineItemType, shown] = fetched<bool, QString, QString, int, QString>();
        ProgramState::SuiteInstalled = suite;
        crib->insert("Employee (EmpID,LastName,FirstName,EmpStatus)", {"31,'Young','Zoe','Active'"});
        crib->lendTo(employee, jobOrOH, lineItemType);
        whenModal<frmScrap>([&](frmScrap &form) {
            const QStringList texts{form.ui.dbcEmp->currentText(), form.ui.txtEmpNo->text(), form.ui.dbcJobType->text(),
                                    form.ui.dbcJob->currentText()};
            QCOMPARE(texts.join(' '), shown);
        });
        frmScrap::showModal();
    }

    void loanEndsBeforeAnythingIsChecked()
    {
        ScriptedUser user(QMessageBox::Ok, 5);
        crib->lendTo("30", "900"); // somebody who has left, for a job that is shipped: neither is offered
        whenModal<frmScrap>([&](frmScrap &form) {
            form.ui.cmdOK->click();
            form.ui.dbcEmp->setText("Baker Tom");
            form.ui.cmdOK->click();
            fill(form);
            for (BoundCombo *missing : {form.ui.dbcScrapReason, form.ui.dbcJob, form.ui.dbcEmp}) {
                missing->setText({});
                QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
                QVERIFY(form.isVisible() && missing->hasFocus());
            }
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QVERIFY(!form.isVisible());
        });
        frmScrap::showModal();
        QCOMPARE(
            user.boxes(),
            QStringList(
                {remark("YOUNG ZOE had the tool, but is no active employee any more.\nYou must select an employee!"),
                 remark("The tool was lent for job 900, which is not open any more.\nYou must enter a job or overhead "
                        "number!"),
                 remark("You must select a scrap reason!"), remark("You must enter a job or overhead number!"),
                 remark("You must select an employee!")}));
        QCOMPARE(crib->rows("Select Active,DateIn from CheckOutIn"), QStringList("0|2026-03-04 13:05:09"));
        QCOMPARE(crib->rows("Select out from Tools") + crib->rows("Select ID from Scrap"), QStringList("0"));
        QCOMPARE(crib->listed(), "r1|6|Torque wrench|TW-40|..\\Torque wrenches|..\\Cabinet A|Acme|");
    }

    void reasonsAreReusedOrAdded()
    {
        crib->insert("Tools (Type,Location,Description)", {"2,1,'Another'"});
        for (const auto &[typed, reason] : {std::pair("BROKEN", "1"), {"Worn", "3"}}) {
            whenModal<frmScrap>([typed = typed](frmScrap &form) {
                fill(form);
                form.ui.dbcScrapReason->setText(typed);
                form.ui.cmdOK->click();
            });
            frmScrap::showModal();
            QCOMPARE(crib->rows("Select Reason from Scrap").last(), reason);
        }
        QCOMPARE(crib->rows("Select Description from ScrapReasons order by ID"),
                 QStringList({"Broken", "Lost", "Worn"}));
    }

    void toolIsNeverLost_data()
    {
        row("a pasted apostrophe breaks the statement", "", "", "Tom's fault", "yntax error");
        row("the record is refused", "INSERT", "Scrap", "", "refused");
        row("the tool cannot be deleted", "DELETE", "Tools", "", "refused");
        row("the tool's type is gone", "", "Types", "",
            "The tool could not be entered among the scrapped tools and was not deleted.");
    }

    void toolIsNeverLost()
    {
        const auto [deed, table, notes, message] = fetched<QString, QString, QString, QString>();
        ScriptedUser user(QMessageBox::Ok);
        if (!deed.isEmpty())
            refuse(Session::database(), deed, table);
        else if (!table.isEmpty())
            crib->damage({"DELETE FROM " + table + " WHERE ID=2"});
        QApplication::clipboard()->setText(notes);

        whenModal<frmScrap>([](frmScrap &form) {
            fill(form);
            form.ui.txtNotes->paste();
            form.ui.cmdOK->click();
            QVERIFY(form.isVisible());
            QVERIFY(!QApplication::overrideCursor());
        });
        frmScrap::showModal();
        QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
        QVERIFY(user.seen[0].text.contains(message));
        QCOMPARE(crib->rows("Select ID from Tools"), QStringList("1"));
        QCOMPARE(crib->rows("Select ID from Scrap"), QStringList());
        QCOMPARE(crib->explorer.items.size(), 2);
    }

    void charactersThatBreakStatementsCannotBeTyped()
    {
        whenModal<frmScrap>([](frmScrap &form) {
            for (QWidget *box : std::initializer_list<QWidget *>{form.ui.txtNotes, form.ui.dbcScrapReason}) {
                box->setFocus();
                QTest::keyClicks(QApplication::focusWidget(), "a|b'c\\d\"e*");
                QInputMethodEvent composed;
                composed.setCommitString("'f");
                QApplication::sendEvent(QApplication::focusWidget(), &composed);
            }
            QCOMPARE(form.ui.txtNotes->toPlainText(), "abcde*f");
            QCOMPARE(form.ui.dbcScrapReason->text(), "abcde*f");
        });
        frmScrap::showModal();
    }

private:
    static void fill(frmScrap &form)
    {
        CribWithTool::choose(form, "Baker Tom", "Job", "1250");
        form.ui.dbcScrapReason->setText("Broken");
    }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestScrap)
#include "tst_scrap.moc"
