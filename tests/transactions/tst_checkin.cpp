#include "common/ItemKeys.h"
#include "platform/system/Clock.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/MainSubs.h"
#include "transactions/frmCheckIn.h"

class TestCheckIn : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void commandRefusesWhatIsNotOut_data();
    void commandRefusesWhatIsNotOut();
    void takesToolBack_data();
    void takesToolBack();
    void closesEveryOpenLoanOfTheToolAlone();
    void lockedFileLeavesToolOut();

private:
    std::optional<CribDatabase> crib;
    FakeExplorer explorer;
};

void TestCheckIn::init()
{
    crib.emplace();
    crib->run({
        "INSERT INTO Tools (Type,Location,PartNumber,Description,Out) VALUES(2,1,'TW-40','Torque wrench',-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active)"
        " VALUES(1,'21',1250,4,#2026-02-01 08:00:00#,-1)",
    });
    explorer.mode = "location";
    explorer.items = {
        {"co1", "Torque wrench", ItemIcon::toolOut, {"TW-40", "..\\Torque wrenches", "..\\Cabinet A", "Acme", "21"}},
        {"r2", "Screwdriver", ItemIcon::toolInStock}};
    explorer.selected = 0;
    explorer.calls.clear();
    Clock::setSource([] { return QDateTime({2026, 3, 4}, {13, 5, 9}); });
}

void TestCheckIn::cleanup()
{
    Clock::setSource({});
    crib.reset();
}

void TestCheckIn::commandRefusesWhatIsNotOut_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("icon");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QMessageBox::Icon>("boxIcon");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    QTest::newRow("a tool in stock") << "r1" << int(ItemIcon::toolInStock) << "The selected tool is already checked in!"
                                     << QMessageBox::NoIcon << (ok | QMessageBox::Cancel);
    QTest::newRow("a scrapped tool") << "j1" << int(ItemIcon::toolScrapped)
                                     << "The selected tool is scrapped and must be restored before using!"
                                     << QMessageBox::NoIcon << ok;
    QTest::newRow("a folder, silently") << "l1" << int(ItemIcon::folder) << QString() << QMessageBox::NoIcon << ok;
    QTest::newRow("nothing selected") << QString() << 0 << "Please select a tool to Check In."
                                      << QMessageBox::Information << ok;
}

void TestCheckIn::commandRefusesWhatIsNotOut()
{
    QFETCH(QString, key);
    QFETCH(int, icon);
    QFETCH(QString, message);
    ScriptedUser user;
    if (!message.isEmpty())
        user.answers(QMessageBox::Ok);
    explorer.items = {{key, "Item", icon}};
    explorer.selected = key.isEmpty() ? -1 : 0;

    MainSubs::CheckInSelectedTool();

    QCOMPARE(user.texts().join('\n'), message);
    QVERIFY(user.done());
    if (!message.isEmpty()) {
        QTEST(user.seen[0].icon, "boxIcon");
        QTEST(user.seen[0].buttons, "buttons");
    }
    QCOMPARE(explorer.selected, 0);
    QCOMPARE(explorer.calls, key.isEmpty() ? QStringList("focus list") : QStringList());
}

void TestCheckIn::takesToolBack_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("listed");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("calls");

    QTest::newRow("in the location view the item stays")
        << "location" << 2 << "cmdOk" << QStringList({"r1", "r2"}) << QStringList("focus list");
    QTest::newRow("from among the tools on loan it goes")
        << "checkedOut" << 2 << "cmdOk" << QStringList("r2") << QStringList("focus list");
    QTest::newRow("after the last one on loan the view is rebuilt")
        << "checkedOut" << 1 << "cmdOk" << QStringList("co1") << QStringList({"rebuild view", "focus list"});
    QTest::newRow("Cancel changes nothing")
        << "location" << 2 << "cmdCancel" << QStringList({"co1", "r2"}) << QStringList();
}

void TestCheckIn::takesToolBack()
{
    QFETCH(QString, mode);
    QFETCH(int, listed);
    QFETCH(QString, button);
    explorer.mode = mode;
    explorer.items.resize(listed);

    whenModal<frmCheckIn>([&](frmCheckIn &form) {
        QCOMPARE(form.ui.lblDescription->text(), "Torque wrench");
        QCOMPARE(form.ui.lblPartNo->text(), "TW-40");
        QCOMPARE(form.ui.lblDate->text(), "Mar-04-2026 13:05");
        QTest::mouseClick(form.findChild<QPushButton *>(button), Qt::LeftButton);
        QVERIFY(!form.isVisible());
    });
    MainSubs::CheckInSelectedTool();

    const bool isBack = button == "cmdOk";
    QCOMPARE(crib->rows("Select DateIn,Active from CheckOutIn"), QStringList(isBack ? "2026-03-04 13:05:09|0" : "|-1"));
    QCOMPARE(crib->rows("Select out from Tools"), QStringList(isBack ? "0" : "-1"));
    QStringList keys;
    for (const ListItem &item : explorer.items)
        keys.append(item.key);
    QTEST(keys, "keys");
    QTEST(explorer.calls, "calls");
    if (keys.contains("r1")) {
        QCOMPARE(explorer.items[0].icon, int(ItemIcon::toolInStock));
        QCOMPARE(explorer.items[0].subItems,
                 QStringList({"TW-40", "..\\Torque wrenches", "..\\Cabinet A", "Acme", ""}));
    }
}

void TestCheckIn::closesEveryOpenLoanOfTheToolAlone()
{
    crib->run({
        "INSERT INTO CheckOutIn (Tool_Id,Active) VALUES(1,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Active) VALUES(2,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Active,DateIn) VALUES(1,0,#2025-01-01 08:00:00#)",
    });
    whenModal<frmCheckIn>([](frmCheckIn &form) { QTest::keyClick(&form, Qt::Key_Return); });
    MainSubs::CheckInSelectedTool();
    QCOMPARE(crib->rows("Select Tool_Id,Active,DateIn from CheckOutIn order by ID"),
             QStringList({"1|0|2026-03-04 13:05:09", "1|0|2026-03-04 13:05:09", "2|-1|", "1|0|2025-01-01 08:00:00"}));
}

void TestCheckIn::lockedFileLeavesToolOut()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    const auto other = Workspace::first().openDatabase(crib->path());
    whenModal<frmCheckIn>([&](frmCheckIn &form) {
        Transaction writing(*other);
        other->execute("Update Locations set Description='Cabinet C' where ID=2");
        form.ui.cmdOk->click();
        QVERIFY(form.isVisible());
        QVERIFY(!QApplication::overrideCursor());
    });
    MainSubs::CheckInSelectedTool();

    QCOMPARE(user.seen.size(), 1);
    QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
    QVERIFY(!user.seen[0].text.isEmpty());
    QCOMPARE(crib->rows("Select Active from CheckOutIn"), QStringList("-1"));
    QCOMPARE(crib->rows("Select out from Tools"), QStringList("-1"));
    QCOMPARE(explorer.items[0].key, "co1");
}

QTEST_MAIN(TestCheckIn)
#include "tst_checkin.moc"
