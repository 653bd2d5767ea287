#include "common/ItemKeys.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/MainSubs.h"
#include "transactions/frmScrapRestore.h"

class TestRestore : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void commandWantsAScrappedTool_data();
    void commandWantsAScrappedTool();
    void loadShowsTheRecord();
    void restoresUnderTheOldNumber_data();
    void restoresUnderTheOldNumber();
    void refusesBadData_data();
    void refusesBadData();
    void missingFoldersMustBePicked();
    void failedRestoreDeletesNothing_data();
    void failedRestoreDeletesNothing();
    void purgeTakesRecordLoansAndTheToolOfItsNumber();
    void purgeReportsEachFailureAndGoesOn();

private:
    QStringList scrap() const { return crib->rows("Select ID from Scrap"); }

    std::optional<CribDatabase> crib;
    FakeExplorer explorer;
    QString scrapId;
};

void TestRestore::init()
{
    crib.emplace();
    crib->run({
        "INSERT INTO Scrap (ToolID,Type,TypeDescription,Manufacturer,PartNumber,Description,PricePer,Location,JobOrOH)"
        " VALUES(5,2,'Torque wrenches','ACME','TW-40','Torque wrench',1129.5,1,1250)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,Active) VALUES(5,'21',0)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,Active) VALUES(6,'21',0)",
    });
    scrapId = scrap().value(0);
    explorer.mode = "scrap";
    explorer.items = {{"j" + scrapId, "Torque wrench", ItemIcon::toolScrapped}};
    explorer.selected = 0;
    explorer.picked.reset();
    explorer.calls.clear();
}

void TestRestore::cleanup() { crib.reset(); }

void TestRestore::commandWantsAScrappedTool_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("listed");

    QTest::newRow("a folder is passed over in silence") << "s4" << 1;
    QTest::newRow("without a selection the first item is offered") << QString() << 1;
    QTest::newRow("in an empty list there is none") << QString() << 0;
}

void TestRestore::commandWantsAScrappedTool()
{
    QFETCH(QString, key);
    QFETCH(int, listed);
    ScriptedUser user;
    if (key.isEmpty())
        user.answers(QMessageBox::Ok);
    explorer.items[0].key = key;
    explorer.items.resize(listed);
    explorer.selected = key.isEmpty() ? -1 : 0;

    MainSubs::RestoreSelectedScrap();

    QVERIFY(user.done());
    if (key.isEmpty()) {
        QCOMPARE(user.seen[0].text, "Please select a scrapped tool to restore.");
        QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    }
    QCOMPARE(explorer.selected, listed - 1);
}

void TestRestore::loadShowsTheRecord()
{
    crib->run({"INSERT INTO Tools (Type,Location,Manufacturer,Description) VALUES(1,1,'Acme','Wrench')"});
    whenModal<frmScrapRestore>([](frmScrapRestore &form) {
        QCOMPARE(form.windowTitle(), "Restore Tool");
        QCOMPARE(form.ui.txtToolType->text(), "Torque wrenches");
        QCOMPARE(form.ui.txtLocation->text(), "Cabinet A");
        // Listed as "Acme", but these are the record's own letters.
        QCOMPARE(form.ui.cboMfg->text(), "ACME");
        QCOMPARE(form.ui.cboMfg->itemText(0), "Acme");
        QCOMPARE(form.ui.txtPart->text(), "TW-40");
        QCOMPARE(form.ui.txtDesc->text(), "Torque wrench");
        QCOMPARE(form.ui.txtCost->text(), "$1,129.50");
        QTest::mouseClick(form.ui.cmdCancel, Qt::LeftButton);
        QVERIFY(!form.isVisible());
    });
    MainSubs::RestoreSelectedScrap();
    QCOMPARE(scrap().size(), 1);
    QCOMPARE(explorer.calls, QStringList());
}

void TestRestore::restoresUnderTheOldNumber_data()
{
    QTest::addColumn<QString>("cost");
    QTest::addColumn<QString>("price");

    QTest::newRow("the cost as it is shown becomes 0") << QString() << "0";
    QTest::newRow("a plain number is the price") << "88.25"
                                                 << "88.25";
    QTest::newRow("only the leading number counts") << "12.5 each"
                                                    << "12.5";
}

void TestRestore::restoresUnderTheOldNumber()
{
    QFETCH(QString, cost);
    QFETCH(QString, price);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
        if (!cost.isEmpty())
            form.ui.txtCost->setText(cost);
        form.ui.txtDesc->setText("Tom's wrench");
        form.ui.cboMfg->setText("O'Neil");
        QTest::mouseClick(form.ui.cmdRestore, Qt::LeftButton);
        QVERIFY(!form.isVisible());
    });
    MainSubs::RestoreSelectedScrap();

    QCOMPARE(crib->rows("Select ID,Type,Manufacturer,PartNumber,Description,PricePer,Out,Location from Tools"),
             QStringList("5|2|O'Neil|TW-40|Tom's wrench|" + price + "|0|1"));
    QCOMPARE(scrap(), QStringList());
    QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList({"5", "6"}));
    QCOMPARE(user.texts(), QStringList("Tool was successfully restored"));
    QCOMPARE(user.seen[0].caption, "Restore Tool");
    QCOMPARE(user.seen[0].icon, QMessageBox::NoIcon);
    QCOMPARE(explorer.calls, QStringList("rebuild view"));
}

void TestRestore::refusesBadData_data()
{
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("manufacturerLength");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("message");

    QTest::newRow("location first") << QString() << QString() << 256 << QString() << "Location may not be blank!";
    QTest::newRow("then type") << "Cabinet A" << QString() << 256 << QString() << "Tool Type may not be blank!";
    QTest::newRow("then manufacturer") << "Cabinet A"
                                       << "Wrenches" << 256 << QString()
                                       << "Manufacturer may not be longer than 255 characters!";
    QTest::newRow("then description") << "Cabinet A"
                                      << "Wrenches" << 255 << QString() << "Description may not be blank!";
}

void TestRestore::refusesBadData()
{
    QFETCH(QString, location);
    QFETCH(QString, type);
    QFETCH(int, manufacturerLength);
    QFETCH(QString, description);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
        form.ui.txtLocation->setText(location);
        form.ui.txtToolType->setText(type);
        form.ui.cboMfg->setText(QString(manufacturerLength, 'm'));
        form.ui.txtDesc->setText(description);
        QTest::keyClick(form.ui.txtDesc, Qt::Key_Return);
        QVERIFY(form.isVisible());
    });
    MainSubs::RestoreSelectedScrap();
    QTEST(user.texts().join('\n'), "message");
    QCOMPARE(user.seen[0].caption, "System Message");
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(scrap().size(), 1);
}

void TestRestore::missingFoldersMustBePicked()
{
    crib->run({"Update Scrap set Type=77, Location=88"});
    ScriptedUser user;
    user.answers(QMessageBox::Ok, 4);
    whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
        QCOMPARE(form.ui.txtToolType->text(), QString());
        QCOMPARE(form.ui.txtLocation->text(), QString());
        form.ui.cmdRestore->click();
        explorer.picked = PickedFolder{2, "Vorlane\\Cabinet B"};
        QTest::mouseClick(form.ui.cmdTreeLoc, Qt::LeftButton);
        QCOMPARE(form.ui.txtLocation->text(), "Vorlane\\Cabinet B");
        // A cancelled picker leaves things as they are.
        explorer.picked.reset();
        QTest::mouseClick(form.ui.cmdTreeLoc, Qt::LeftButton);
        form.ui.cmdRestore->click();
        explorer.picked = PickedFolder{1, "Vorlane\\Wrenches"};
        QTest::mouseClick(form.ui.cmdTreeType, Qt::LeftButton);
        form.ui.cmdRestore->click();
        QVERIFY(!form.isVisible());
    });
    MainSubs::RestoreSelectedScrap();

    QVERIFY(user.done());
    QCOMPARE(
        user.texts(),
        QStringList({"Scrapped Tool Type no longer exist! Please select a new Tool Type.\n"
                     "Scrapped Tool location no longer exist! Please select a new Tool Location.",
                     "Location may not be blank!", "Tool Type may not be blank!", "Tool was successfully restored"}));
    QCOMPARE(user.seen[0].caption, "Restore criteria missing");
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(explorer.calls, QStringList({"pick location", "pick location", "pick type", "rebuild view"}));
    QCOMPARE(crib->rows("Select Type,Location from Tools"), QStringList("1|2"));
}

void TestRestore::failedRestoreDeletesNothing_data()
{
    QTest::addColumn<QString>("statement");

    QTest::newRow("the number is taken again")
        << "INSERT INTO Tools (ID,Type,Location,Description) VALUES(5,1,1,'Pliers')";
    QTest::newRow("the location was deleted since") << "Delete from Locations where ID=1";
    QTest::newRow("the record was purged since") << "Delete from Scrap";
}

void TestRestore::failedRestoreDeletesNothing()
{
    QFETCH(QString, statement);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    QStringList scrapBefore, toolsBefore;
    whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
        crib->run({statement});
        scrapBefore = scrap();
        toolsBefore = crib->rows("Select Description from Tools");
        form.ui.cmdRestore->click();
        QVERIFY(form.isVisible());
    });
    MainSubs::RestoreSelectedScrap();

    QCOMPARE(user.seen.size(), 1);
    QVERIFY(user.seen[0].text.startsWith("Restore failed due to:"));
    QVERIFY(user.seen[0].text.length() > QString("Restore failed due to:").length());
    QCOMPARE(user.seen[0].icon, QMessageBox::NoIcon);
    QCOMPARE(user.seen[0].caption, "System Message");
    QCOMPARE(scrap(), scrapBefore);
    QCOMPARE(crib->rows("Select Description from Tools"), toolsBefore);
}

void TestRestore::purgeTakesRecordLoansAndTheToolOfItsNumber()
{
    const QString tool = "INSERT INTO Tools (ID,Type,Location,Description) VALUES(%1,1,1,'Live')";
    crib->run({tool.arg(scrapId), tool.arg(5)});
    QVERIFY(!MainSubs::PurgeScrapped("Type", scrapId.toInt()));
    QCOMPARE(scrap(), QStringList(scrapId));

    QVERIFY(MainSubs::PurgeScrapped("Tool", scrapId.toInt()));
    QCOMPARE(scrap(), QStringList());
    QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList("6"));
    // The record's number, not its tool's.
    QCOMPARE(crib->rows("Select ID from Tools"), QStringList("5"));
}

void TestRestore::purgeReportsEachFailureAndGoesOn()
{
    Session::database().executeNative("CREATE TRIGGER KeepLoans BEFORE DELETE ON CheckOutIn"
                                      " BEGIN SELECT RAISE(ABORT, 'loans are kept'); END");
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    QVERIFY(!MainSubs::PurgeScrapped("Tool", scrapId.toInt()));
    QCOMPARE(user.seen.size(), 1);
    QVERIFY(user.seen[0].text.contains("loans are kept"));
    QVERIFY(user.seen[0].text.front().isDigit());
    QCOMPARE(user.seen[0].icon, QMessageBox::NoIcon);
    QCOMPARE(scrap(), QStringList());
    QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList({"5", "6"}));
}

QTEST_MAIN(TestRestore)
#include "tst_restore.moc"
