#include "tests/support/CribWithTool.h"
#include "transactions/ToolCommands.h"
#include "transactions/frmScrapRestore.h"

class TestRestore : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        crib->run({"DELETE FROM Tools"});
        crib->insert(
            "Scrap (ToolID,Type,TypeDescription,Manufacturer,PartNumber,Description,PricePer,Location,JobOrOH)",
            {"5,2,'Torque wrenches','ACME','TW-40','Torque wrench',1129.5,1,1250"});
        crib->insert("CheckOutIn (Tool_Id,Employee,Active)", {"5,'21',0", "6,'21',0"});
        crib->explorer.items = {{"j16384", "Torque wrench", ItemIcon::toolScrapped}};
    }

    void restoresUnderTheOldNumber_data()
    {
        row("the cost as it is shown", QString(), "1129.5");
        row("a currency sign makes it 0", "$1,129.50", "0");
        row("only the leading number counts", "12.5 each", "12.5");
    }

    void restoresUnderTheOldNumber()
    {
        const auto [cost, price] = fetched<QString, QString>();
        crib->insert("Tools (Type,Location,Manufacturer,Description)", {"1,1,'Acme','Wrench'"});
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
            // Listed as "Acme", but these are the record's own letters.
            QCOMPARE(form.ui.cboMfg->text(), "ACME");
            QCOMPARE(form.ui.cboMfg->itemText(0), "Acme");
            QCOMPARE(form.ui.txtCost->text(), "1129.5"); // as it will be read
            if (!cost.isEmpty())
                form.ui.txtCost->setText(cost);
            form.ui.txtDesc->setText("Tom's wrench");
            form.ui.cboMfg->setText("O'Neil");
            QTest::mouseClick(form.ui.cmdRestore, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        MainSubs::RestoreSelectedScrap();
        QCOMPARE(crib->rows("Select ID,Type,Manufacturer,PartNumber,Description,PricePer,Out,Location from Tools "
                            "where ID=5"),
                 QStringList("5|2|O'Neil|TW-40|Tom's wrench|" + price + "|0|1"));
        QCOMPARE(scrap(), QStringList());
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList({"5", "6"}));
        QCOMPARE(user.boxes(), QStringList("Restore Tool: Tool was successfully restored [OK]"));
        QCOMPARE(crib->explorer.calls, QStringList("rebuild view"));
    }

    void missingFoldersMustBePicked()
    {
        crib->run({"Update Scrap set Type=77, Location=88"});
        ScriptedUser user(QMessageBox::Ok, 4);
        whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
            QTest::keyClick(form.ui.txtDesc, Qt::Key_Return);
            crib->explorer.picked = PickedFolder{2, "Vorlane\\Cabinet B"};
            QTest::mouseClick(form.ui.cmdTreeLoc, Qt::LeftButton);
            form.ui.cmdRestore->click();
            crib->explorer.picked = PickedFolder{1, "Vorlane\\Wrenches"};
            QTest::mouseClick(form.ui.cmdTreeType, Qt::LeftButton);
            form.ui.cmdRestore->click();
            QVERIFY(!form.isVisible());
        });
        MainSubs::RestoreSelectedScrap();
        QCOMPARE(
            user.boxes(),
            QStringList({"Restore criteria missing (information): Scrapped Tool Type no longer exist! Please select "
                         "a new Tool Type.\nScrapped Tool location no longer exist! Please select a new Tool "
                         "Location. [OK]",
                         remark("Location may not be blank!"), remark("Tool Type may not be blank!"),
                         "Restore Tool: Tool was successfully restored [OK]"}));
        QCOMPARE(crib->explorer.calls, QStringList({"pick location", "pick type", "rebuild view"}));
        QCOMPARE(crib->rows("Select Type,Location from Tools"), QStringList("1|2"));
    }

    void failedRestoreDeletesNothing_data()
    {
        row("the number is taken again", "INSERT INTO Tools (ID,Type,Location,Description) VALUES(5,1,1,'Pliers')");
        row("the location was deleted since", "Delete from Locations where ID=1");
        row("the record was purged since", "Delete from Scrap");
    }

    void failedRestoreDeletesNothing()
    {
        const auto [statement] = fetched<QString>();
        ScriptedUser user(QMessageBox::Ok);
        QStringList scrapBefore, toolsBefore;
        whenModal<frmScrapRestore>([&](frmScrapRestore &form) {
            crib->run({statement});
            scrapBefore = scrap();
            toolsBefore = crib->rows("Select Description from Tools");
            form.ui.cmdRestore->click();
            QVERIFY(form.isVisible());
        });
        MainSubs::RestoreSelectedScrap();
        const QString problem = "System Message: Restore failed due to:";
        QCOMPARE(user.boxes()[0].left(problem.length()), problem);
        QVERIFY(user.boxes()[0].length() > problem.length() + QString(" [OK]").length());
        QCOMPARE(scrap(), scrapBefore);
        QCOMPARE(crib->rows("Select Description from Tools"), toolsBefore);
    }

private:
    QStringList scrap() const { return crib->rows("Select ID from Scrap"); }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestRestore)
#include "tst_restore.moc"
