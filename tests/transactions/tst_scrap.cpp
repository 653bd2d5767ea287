#include "common/ItemKeys.h"
#include "common/ProgramState.h"
#include "platform/system/Clock.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/frmScrap.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QCompleter>

class TestScrap : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void movesToolToScrap_data();
    void movesToolToScrap();
    void jobTypeChoosesTheList_data();
    void jobTypeChoosesTheList();
    void loanFillsTheDialog_data();
    void loanFillsTheDialog();
    void toolOnLoanIsScrappedWithoutTouchingABox();
    void loanEndsBeforeAnythingIsChecked_data();
    void loanEndsBeforeAnythingIsChecked();
    void reasonsAreReusedOrAdded_data();
    void reasonsAreReusedOrAdded();
    void toolIsNeverLost_data();
    void toolIsNeverLost();
    void charactersThatBreakStatementsCannotBeTyped();

private:
    void lendTo(const QString &employee, const QString &jobOrOH, int lineItemType);
    QString loan() const { return crib->rows("Select Active,DateIn from CheckOutIn").join('\n'); }
    static void fill(frmScrap &form);

    std::optional<CribDatabase> crib;
    FakeExplorer explorer;
};

void TestScrap::init()
{
    crib.emplace();
    crib->run({"INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
               " VALUES(2,1,'Acme','TW-40','Torque wrench',129.5,0)"});
    explorer.mode = "type";
    explorer.items = {
        {"r1", "Torque wrench", ItemIcon::toolInStock, {"TW-40", "..\\Torque wrenches", "..\\Cabinet A", "Acme", ""}},
        {"r2", "Screwdriver", ItemIcon::toolInStock}};
    explorer.selected = 0;
    explorer.calls.clear();
    ProgramState::SuiteInstalled = true;
    Clock::setSource([] { return QDateTime({2026, 3, 4}, {13, 5, 9}); });
}

void TestScrap::cleanup()
{
    Clock::setSource({});
    crib.reset();
}

void TestScrap::lendTo(const QString &employee, const QString &jobOrOH, int lineItemType)
{
    crib->run({"Update Tools set out=-1",
               QStringLiteral(
                   "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,Active) VALUES(1,'%1',%2,%3,-1)")
                   .arg(employee, jobOrOH)
                   .arg(lineItemType)});
    explorer.items[0].key = "co1";
    explorer.items[0].icon = ItemIcon::toolOut;
    explorer.items[0].setSubItem(5, employee);
}

void TestScrap::fill(frmScrap &form)
{
    form.ui.dbcEmp->setText("Baker Tom");
    form.ui.dbcJobType->setText("Job");
    form.ui.dbcJob->setText("1250");
    form.ui.dbcScrapReason->setText("Broken");
}

void TestScrap::movesToolToScrap_data()
{
    QTest::addColumn<bool>("suiteInstalled");
    QTest::addColumn<QString>("jobType");
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("charged");
    QTest::addColumn<int>("listed");

    QTest::newRow("job of the suite") << true << "Job"
                                      << "1250"
                                      << "1250|4" << 2;
    QTest::newRow("job of the own list by its row") << false << "Job"
                                                    << "7002"
                                                    << "2|4" << 2;
    QTest::newRow("overhead, called by digits, by its number") << true << "Overhead"
                                                               << "2024"
                                                               << "12|5" << 2;
    QTest::newRow("the last tool listed") << true << "Overhead"
                                          << "Repair"
                                          << "11|5" << 1;
}

void TestScrap::movesToolToScrap()
{
    QFETCH(bool, suiteInstalled);
    QFETCH(QString, jobType);
    QFETCH(QString, job);
    QFETCH(QString, charged);
    QFETCH(int, listed);
    ProgramState::SuiteInstalled = suiteInstalled;
    explorer.items.resize(listed);

    whenModal<frmScrap>([&](frmScrap &form) {
        QCOMPARE(form.windowTitle(), "Scrap Tool");
        QCOMPARE(form.ui.lblTool->text(), "Torque wrench");
        QCOMPARE(form.ui.lblLocation->text(), "..\\Cabinet A");
        QVERIFY(form.ui.dbcEmp->hasFocus());
        form.ui.dbcEmp->setText("Baker Tom");
        QCOMPARE(form.ui.txtEmpNo->text(), "21");
        form.ui.dbcJobType->setText(jobType);
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

void TestScrap::jobTypeChoosesTheList_data()
{
    QTest::addColumn<QString>("jobType");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("first");

    QTest::newRow("jobs") << "Job"
                          << "Scrapped on Job Number:"
                          << "12500";
    QTest::newRow("overhead operations by number") << "Overhead"
                                                   << "Overhead Operation"
                                                   << "Cleaning";
    QTest::newRow("nothing for an empty text") << QString() << QString() << QString();
}

void TestScrap::jobTypeChoosesTheList()
{
    QFETCH(QString, jobType);
    whenModal<frmScrap>([&](frmScrap &form) {
        form.ui.dbcJobType->setText(jobType);
        QTEST(form.ui.Label2->text(), "label");
        QTEST(form.ui.dbcJob->itemText(0), "first");
        QCOMPARE(form.ui.dbcJob->text(), QString());
    });
    frmScrap::showModal();
}

void TestScrap::loanFillsTheDialog_data()
{
    QTest::addColumn<bool>("suiteInstalled");
    QTest::addColumn<QString>("employee");
    QTest::addColumn<QString>("jobOrOH");
    QTest::addColumn<int>("lineItemType");
    QTest::addColumn<QString>("shown");

    QTest::newRow("job of the suite") << true << "21"
                                      << "1250" << 4 << "BAKER TOM 21 Job 1250";
    QTest::newRow("job of the own list, found by its number") << false << "21"
                                                              << "7002" << 4 << "BAKER TOM 21 Job 7002";
    QTest::newRow("overhead") << true << "17"
                              << "11" << 5 << "MILLER ANNA 17 Overhead Repair";
    QTest::newRow("the namesake who has it") << true << "18"
                                             << "11" << 5 << "MILLER ANNA 18 Overhead Repair";
    QTest::newRow("a borrower who left is no choice") << true << "30"
                                                      << "1250" << 4 << "  Job 1250";
    QTest::newRow("an unknown borrower is none") << true << "99"
                                                 << "1250" << 4 << "  Job 1250";
    QTest::newRow("a shipped job is none") << true << "21"
                                           << "900" << 4 << "BAKER TOM 21 Job ";
    QTest::newRow("an unknown operation is none") << true << "21"
                                                  << "2024" << 5 << "BAKER TOM 21 Overhead ";
    QTest::newRow("an unknown kind of charge") << true << "21"
                                               << "1250" << 9 << "BAKER TOM 21  ";
}

void TestScrap::loanFillsTheDialog()
{
    QFETCH(bool, suiteInstalled);
    QFETCH(QString, employee);
    QFETCH(QString, jobOrOH);
    QFETCH(int, lineItemType);
    ProgramState::SuiteInstalled = suiteInstalled;
    lendTo(employee, jobOrOH, lineItemType);
    whenModal<frmScrap>([&](frmScrap &form) {
        const QStringList shown{form.ui.dbcEmp->text(), form.ui.txtEmpNo->text(), form.ui.dbcJobType->text(),
                                form.ui.dbcJob->text()};
        QTEST(shown.join(' '), "shown");
    });
    frmScrap::showModal();
}

void TestScrap::toolOnLoanIsScrappedWithoutTouchingABox()
{
    crib->run({"INSERT INTO Employee (EmpID,LastName,FirstName,EmpStatus) VALUES(31,'Young','Zoe','Active')"});
    lendTo("18", "1250", 4);
    whenModal<frmScrap>([](frmScrap &form) {
        form.ui.dbcScrapReason->setText("Lost");
        QTest::keyClick(form.ui.dbcScrapReason, Qt::Key_Return);
        QVERIFY(!form.isVisible());
    });
    frmScrap::showModal();
    QCOMPARE(crib->rows("Select ToolID,Employee,JobOrOH,LineItemTypeId,Reason from Scrap"),
             QStringList("1|18|1250|4|2"));
    QCOMPARE(crib->rows("Select ID from Tools"), QStringList());
    QCOMPARE(loan(), "0|2026-03-04 13:05:09");

    // The namesake of a borrower who left does not take his place.
    crib->run({"INSERT INTO Tools (ID,Type,Location,Description) VALUES(1,1,1,'Torque wrench')"});
    explorer.items.prepend({"co1", "Torque wrench", ItemIcon::toolOut});
    lendTo("30", "1250", 4);
    whenModal<frmScrap>([](frmScrap &form) { QCOMPARE(form.ui.dbcEmp->text(), QString()); });
    frmScrap::showModal();
}

void TestScrap::loanEndsBeforeAnythingIsChecked_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("message");

    QTest::newRow("nobody") << "dbcEmp"
                            << "You must select an employee!";
    QTest::newRow("no job") << "dbcJob"
                            << "You must enter a job or overhead number!";
    QTest::newRow("no reason") << "dbcScrapReason"
                               << "You must select a scrap reason!";
}

void TestScrap::loanEndsBeforeAnythingIsChecked()
{
    QFETCH(QString, missing);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    lendTo("21", "1250", 4);
    whenModal<frmScrap>([&](frmScrap &form) {
        fill(form);
        form.findChild<BoundCombo *>(missing)->setText({});
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(form.isVisible());
        QCOMPARE(QApplication::focusWidget()->objectName(), missing);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!form.isVisible());
    });
    frmScrap::showModal();

    QTEST(user.texts().join('\n'), "message");
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(loan(), "0|2026-03-04 13:05:09");
    QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
    QCOMPARE(crib->rows("Select ID from Scrap"), QStringList());
    QCOMPARE(explorer.items[0].key, "r1");
    QCOMPARE(explorer.items[0].icon, int(ItemIcon::toolInStock));
    QCOMPARE(explorer.items[0].subItem(5), QString());
}

void TestScrap::reasonsAreReusedOrAdded_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("reasons");
    QTest::addColumn<QString>("used");

    QTest::newRow("an old one in other letters") << "BROKEN" << QStringList({"Broken", "Lost"}) << "1";
    QTest::newRow("a new one") << "Bent" << QStringList({"Broken", "Lost", "Bent"}) << "3";
    QTest::newRow("a new one that another begins with") << "Brok" << QStringList({"Broken", "Lost", "Brok"}) << "3";
}

void TestScrap::reasonsAreReusedOrAdded()
{
    QFETCH(QString, typed);
    whenModal<frmScrap>([&](frmScrap &form) {
        fill(form);
        form.ui.dbcScrapReason->setText({});
        form.ui.dbcScrapReason->setFocus();
        QTest::keyClicks(form.ui.dbcScrapReason, typed);
        form.ui.cmdOK->click();
        QVERIFY(!form.isVisible());
    });
    frmScrap::showModal();
    QTEST(crib->rows("Select Description from ScrapReasons order by ID"), "reasons");
    QTEST(crib->rows("Select Reason from Scrap").join('\n'), "used");
}

void TestScrap::toolIsNeverLost_data()
{
    QTest::addColumn<QStringList>("damage");
    QTest::addColumn<QString>("notes");
    QTest::addColumn<QString>("message");

    QTest::newRow("a pasted apostrophe breaks the statement") << QStringList() << "Tom's fault" << QString();
    QTest::newRow("the record is refused")
        << QStringList("CREATE TRIGGER NoScrap BEFORE INSERT ON Scrap BEGIN SELECT RAISE(ABORT, 'no scrap'); END")
        << QString() << QString();
    QTest::newRow("the tool's type is gone")
        << QStringList({"PRAGMA foreign_keys=OFF", "DELETE FROM Types WHERE ID=2"}) << QString()
        << "The tool could not be entered among the scrapped tools and was not deleted.";
}

void TestScrap::toolIsNeverLost()
{
    QFETCH(QStringList, damage);
    QFETCH(QString, notes);
    QFETCH(QString, message);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    for (const QString &statement : damage)
        Session::database().executeNative(statement);
    QApplication::clipboard()->setText(notes);

    whenModal<frmScrap>([](frmScrap &form) {
        fill(form);
        form.ui.txtNotes->paste();
        form.ui.cmdOK->click();
        QVERIFY(form.isVisible());
        QVERIFY(!QApplication::overrideCursor());
    });
    frmScrap::showModal();

    QCOMPARE(user.seen.size(), 1);
    QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
    if (message.isEmpty())
        QVERIFY(!user.seen[0].text.isEmpty());
    else
        QCOMPARE(user.seen[0].text, message);
    QCOMPARE(crib->rows("Select ID from Tools"), QStringList("1"));
    QCOMPARE(crib->rows("Select ID from Scrap"), QStringList());
    QCOMPARE(explorer.items.size(), 2);
}

void TestScrap::charactersThatBreakStatementsCannotBeTyped()
{
    whenModal<frmScrap>([](frmScrap &form) {
        for (QWidget *box :
             {static_cast<QWidget *>(form.ui.txtNotes), static_cast<QWidget *>(form.ui.dbcScrapReason)}) {
            box->setFocus();
            QTest::keyClicks(QApplication::focusWidget(), "a|b'c\\d\"e*");
            QInputMethodEvent composed;
            composed.setCommitString("'f");
            QApplication::sendEvent(QApplication::focusWidget(), &composed);
            QTest::keyClicks(QApplication::focusWidget(), "gh");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        }
        QCOMPARE(form.ui.txtNotes->toPlainText(), "abcde*fg");
        QCOMPARE(form.ui.dbcScrapReason->text(), "abcde*fg");

        // While completions are offered, their list takes the keys.
        form.ui.dbcScrapReason->setText({});
        QTest::keyClicks(form.ui.dbcScrapReason, "bro");
        QWidget *completions = form.ui.dbcScrapReason->completer()->popup();
        QVERIFY(completions->isVisible());
        QTest::keyClicks(completions, "'k");
        QCOMPARE(form.ui.dbcScrapReason->text(), "brok");
    });
    frmScrap::showModal();
}

QTEST_MAIN(TestScrap)
#include "tst_scrap.moc"
