#include "common/ItemKeys.h"
#include "common/ProgramState.h"
#include "platform/system/Clock.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/MainSubs.h"
#include "transactions/frmCheckOut.h"

class TestCheckOut : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void commandRefusesWhatCannotBeLent_data();
    void commandRefusesWhatCannotBeLent();
    void loadShowsToolAndEmployees();
    void jobTypeChoosesTheList_data();
    void jobTypeChoosesTheList();
    void lendingByKeys();
    void storesLoan_data();
    void storesLoan();
    void refusesIncompleteChoice_data();
    void refusesIncompleteChoice();
    void jobTypeTypedLastCounts();
    void loanThatCannotBeStoredLeavesDialogOpen();
    void toolNumberAboveSixteenBitsIsRefused();

private:
    static QStringList choices(const QComboBox *box);

    std::optional<CribDatabase> crib;
    FakeExplorer explorer;
};

void TestCheckOut::init()
{
    crib.emplace();
    crib->run({"INSERT INTO Tools (Type,Location,PartNumber,Description,Out) VALUES(2,1,'TW-40','Torque wrench',0)"});
    explorer.mode = "type";
    explorer.items = {
        {"r1", "Torque wrench", ItemIcon::toolInStock, {"TW-40", "..\\Torque wrenches", "..\\Cabinet A", "Acme", ""}}};
    explorer.selected = 0;
    explorer.calls.clear();
    ProgramState::SuiteInstalled = true;
    Clock::setSource([] { return QDateTime({2026, 3, 4}, {13, 5, 9}); });
}

void TestCheckOut::cleanup()
{
    Clock::setSource({});
    crib.reset();
}

QStringList TestCheckOut::choices(const QComboBox *box)
{
    QStringList texts;
    for (int row = 0; row < box->count(); ++row)
        texts.append(box->itemText(row));
    return texts;
}

void TestCheckOut::commandRefusesWhatCannotBeLent_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QMessageBox::Icon>("boxIcon");

    QTest::newRow("a tool that is out") << "co1" << int(ItemIcon::toolOut)
                                        << "The selected tool is checked out and cannot be Checked out Again!"
                                        << QMessageBox::NoIcon;
    QTest::newRow("a scrapped tool") << "j1" << int(ItemIcon::toolScrapped)
                                     << "The selected tool is scrapped and cannot be Checked Out!"
                                     << QMessageBox::NoIcon;
    QTest::newRow("a folder, silently") << "t1" << int(ItemIcon::folder) << QString() << QMessageBox::NoIcon;
    QTest::newRow("nothing selected") << QString() << 0 << "Please select a tool to Check Out."
                                      << QMessageBox::Information;
}

void TestCheckOut::commandRefusesWhatCannotBeLent()
{
    QFETCH(QString, key);
    QFETCH(int, icon);
    QFETCH(QString, message);
    ScriptedUser user;
    if (!message.isEmpty())
        user.answers(QMessageBox::Ok);
    explorer.items = {{key, "Item", icon}};
    explorer.selected = key.isEmpty() ? -1 : 0;

    MainSubs::CheckOutSelectedTool();

    QCOMPARE(user.texts().join('\n'), message);
    QVERIFY(user.done());
    if (!message.isEmpty()) {
        QTEST(user.seen[0].icon, "boxIcon");
        QCOMPARE(user.seen[0].caption, "System Message");
        QCOMPARE(user.seen[0].buttons, QMessageBox::Ok);
    }
    // Without a selection the first item is offered.
    QCOMPARE(explorer.selected, 0);
    QCOMPARE(explorer.calls, key.isEmpty() ? QStringList("focus list") : QStringList());

    if (key.isEmpty()) {
        explorer.items.clear();
        explorer.selected = -1;
        explorer.calls.clear();
        user.answers(QMessageBox::Ok);
        MainSubs::CheckOutSelectedTool();
        QCOMPARE(explorer.selected, -1);
        QCOMPARE(explorer.calls, QStringList());
    }
}

void TestCheckOut::loadShowsToolAndEmployees()
{
    whenModal<frmCheckOut>([](frmCheckOut &form) {
        QCOMPARE(form.windowTitle(), " Tool Checkout");
        QCOMPARE(form.ui.lblDate->text(), "Mar-04-2026 13:05");
        QCOMPARE(form.ui.lblTool->text(), "Torque wrench");
        QCOMPARE(form.ui.lblLocation->text(), "Cabinet A");
        QVERIFY(form.ui.dbcEmp->hasFocus());
        QCOMPARE(choices(form.ui.dbcEmp), QStringList({"BAKER TOM", "MILLER ANNA", "MILLER ANNA"}));
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
    QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
    QCOMPARE(explorer.items[0].key, "r1");
}

void TestCheckOut::jobTypeChoosesTheList_data()
{
    QTest::addColumn<bool>("suiteInstalled");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("jobType");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QStringList>("list");

    QTest::newRow("open jobs of the suite, newest first") << true << "Overhead"
                                                          << "Job"
                                                          << "Job Number" << QStringList({"12500", "1250"});
    QTest::newRow("the own list without the suite") << false << "Overhead"
                                                    << "Job"
                                                    << "Job Number" << QStringList({"7002", "7001"});
    QTest::newRow("overhead operations by description")
        << true << "Job"
        << "Overhead"
        << "Overhead Operation" << QStringList({"2024", "Cleaning", "Repair"});
    QTest::newRow("nothing for an empty text") << true << "Job" << QString() << QString() << QStringList();
    QTest::newRow("nothing for another text") << true << "Job"
                                              << "Stock" << QString() << QStringList();
}

void TestCheckOut::jobTypeChoosesTheList()
{
    QFETCH(bool, suiteInstalled);
    QFETCH(QString, before);
    QFETCH(QString, jobType);
    ProgramState::SuiteInstalled = suiteInstalled;

    whenModal<frmCheckOut>([&](frmCheckOut &form) {
        QCOMPARE(form.ui.Label2->text(), QString());
        form.ui.dbcJobType->setText(before);
        form.ui.dbcJob->setCurrentIndex(0);
        QVERIFY(!form.ui.dbcJob->text().isEmpty());
        form.ui.dbcJobType->setText(jobType);
        QTEST(form.ui.Label2->text(), "label");
        QTEST(choices(form.ui.dbcJob), "list");
        QCOMPARE(form.ui.dbcJob->text(), QString());
    });
    frmCheckOut::showModal();
}

void TestCheckOut::lendingByKeys()
{
    whenModal<frmCheckOut>([](frmCheckOut &form) {
        QTest::keyClicks(QApplication::focusWidget(), "bak");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(form.ui.txtEmpNo->text(), "21");
        QTest::keyClicks(QApplication::focusWidget(), "j");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        // A job number that is whole is that job, though a longer one begins so.
        QTest::keyClicks(QApplication::focusWidget(), "1250");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!form.isVisible());
    });
    MainSubs::CheckOutSelectedTool();
    QCOMPARE(crib->rows("Select Tool_Id,Employee,JobOrOH,LineItemTypeId from CheckOutIn"), QStringList("1|21|1250|4"));
}

void TestCheckOut::storesLoan_data()
{
    QTest::addColumn<bool>("suiteInstalled");
    QTest::addColumn<QString>("jobType");
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("charged");

    QTest::newRow("job of the suite") << true << "Job"
                                      << "12500"
                                      << "12500|4";
    QTest::newRow("job of the own list by its number, not its row") << false << "Job"
                                                                    << "7002"
                                                                    << "7002|4";
    QTest::newRow("overhead by the operation's number") << true << "Overhead"
                                                        << "Repair"
                                                        << "11|5";
    QTest::newRow("overhead described by digits as that number") << true << "Overhead"
                                                                 << "2024"
                                                                 << "2024|5";
}

void TestCheckOut::storesLoan()
{
    QFETCH(bool, suiteInstalled);
    QFETCH(QString, jobType);
    QFETCH(QString, job);
    QFETCH(QString, charged);
    ProgramState::SuiteInstalled = suiteInstalled;

    whenModal<frmCheckOut>([&](frmCheckOut &form) {
        form.ui.dbcEmp->setText("Baker Tom");
        form.ui.dbcJobType->setText(jobType);
        form.ui.dbcJob->setText(job);
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(!form.isVisible());
    });
    MainSubs::CheckOutSelectedTool();

    QCOMPARE(crib->rows("Select Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,DateIn,Active,CheckOutDesc,"
                        "CheckOutPartNo from CheckOutIn"),
             QStringList("1|21|" + charged + "|2026-03-04 13:05:09||-1|Torque wrench|TW-40"));
    QCOMPARE(crib->rows("Select out from Tools"), QStringList("-1"));
    QCOMPARE(explorer.items[0].key, "co1");
    QCOMPARE(explorer.items[0].icon, int(ItemIcon::toolOut));
    QCOMPARE(explorer.items[0].subItems,
             QStringList({"TW-40", "..\\Torque wrenches", "..\\Cabinet A", "Acme", "BAKER TOM"}));
    QCOMPARE(explorer.calls, QStringList("focus list"));
}

void TestCheckOut::refusesIncompleteChoice_data()
{
    QTest::addColumn<QString>("employee");
    QTest::addColumn<QString>("jobType");
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");

    const QString noEmployee = "You must select an Employee!";
    const QString noJob = "You must select a Job Number or Overhead Description!";
    QTest::newRow("nobody") << QString() << "Job"
                            << "1250" << noEmployee << "dbcEmp";
    QTest::newRow("a name that is not offered") << "Young Zoe"
                                                << "Job"
                                                << "1250" << noEmployee << "dbcEmp";
    QTest::newRow("no job type") << "Baker Tom" << QString() << QString() << noJob << "dbcJob";
    QTest::newRow("no job") << "Baker Tom"
                            << "Job" << QString() << noJob << "dbcJob";
    QTest::newRow("a shipped job") << "Baker Tom"
                                   << "Job"
                                   << "900" << noJob << "dbcJob";
}

void TestCheckOut::refusesIncompleteChoice()
{
    QFETCH(QString, employee);
    QFETCH(QString, jobType);
    QFETCH(QString, job);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);

    whenModal<frmCheckOut>([&](frmCheckOut &form) {
        form.ui.dbcEmp->setText(employee);
        form.ui.dbcJobType->setText(jobType);
        form.ui.dbcJob->setText(job);
        form.ui.cndCancel->setFocus();
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(form.isVisible());
        QTEST(QApplication::focusWidget()->objectName(), "focus");
    });
    MainSubs::CheckOutSelectedTool();

    QTEST(user.texts().join('\n'), "message");
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(crib->rows("Select out from Tools"), QStringList("0"));
    QCOMPARE(crib->rows("Select ID from CheckOutIn"), QStringList());
    QCOMPARE(explorer.items[0].key, "r1");
}

void TestCheckOut::jobTypeTypedLastCounts()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmCheckOut>([&](frmCheckOut &form) {
        form.ui.dbcEmp->setText("Baker Tom");
        form.ui.dbcJobType->setText("Job");
        form.ui.dbcJob->setText("1250");
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
    QCOMPARE(crib->rows("Select ID from CheckOutIn"), QStringList());
}

void TestCheckOut::loanThatCannotBeStoredLeavesDialogOpen()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmCheckOut>([](frmCheckOut &form) {
        form.ui.dbcEmp->setText("Baker Tom");
        form.ui.dbcJobType->setText("Job");
        form.ui.dbcJob->setText("1250");
        Session::database().executeNative("CREATE TRIGGER NoLoans BEFORE INSERT ON CheckOutIn"
                                          " BEGIN SELECT RAISE(ABORT, 'no loans today'); END");
        form.ui.cmdOK->click();
        QVERIFY(form.isVisible());
        QVERIFY(!QApplication::overrideCursor());
    });
    MainSubs::CheckOutSelectedTool();

    QCOMPARE(user.seen.size(), 1);
    QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
    QVERIFY(user.seen[0].text.contains("no loans today"));
    QCOMPARE(crib->rows("Select out from Tools"), QStringList("-1"));
    QCOMPARE(explorer.items[0].key, "r1");
}

void TestCheckOut::toolNumberAboveSixteenBitsIsRefused()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    explorer.items[0].key = "r32768";
    whenModal<frmCheckOut>([](frmCheckOut &form) {
        form.ui.dbcEmp->setText("Baker Tom");
        form.ui.dbcJobType->setText("Job");
        form.ui.dbcJob->setText("1250");
        form.ui.cmdOK->click();
        QVERIFY(form.isVisible());
    });
    MainSubs::CheckOutSelectedTool();
    QCOMPARE(user.texts(), QStringList("Overflow"));
    QCOMPARE(crib->rows("Select ID from CheckOutIn"), QStringList());
}

QTEST_MAIN(TestCheckOut)
#include "tst_checkout.moc"
