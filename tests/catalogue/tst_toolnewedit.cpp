#include "catalogue/frmToolNewEdit.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>
#include <QProgressDialog>

namespace {

void fill(frmToolNewEdit &form)
{
    QTest::mouseClick(form.ui.cmdTreeLoc, Qt::LeftButton);
    QTest::keyClicks(form.ui.cboMan, "Acme");
    QTest::keyClicks(form.ui.txtPartNumber, "TW-40");
    QTest::keyClicks(form.ui.txtDescription, "Torque wrench");
    form.ui.fpCost->setValue(12.5);
}

}

class TestToolNewEdit : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        explorer.emplace();
        explorer->picked = PickedFolder{.id = 1, .path = "Vorlane\\Cabinet A"};
    }

    void cleanup()
    {
        explorer.reset();
        crib.reset();
    }

    void presetsTheFolderOfTheTree_data()
    {
        columns<bool, bool, QString>("fromType", "fromLocation", "preset");
        row("from the types", true, false, "Wrenches|1||");
        row("from the locations", false, true, "||Cabinet B|2");
    }

    void presetsTheFolderOfTheTree()
    {
        const auto [fromType, fromLocation] = fetched<bool, bool>("fromType", "fromLocation");
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            QCOMPARE(form.windowTitle(), "New Tool");
            QTEST(folders(form), "preset");
            QCOMPARE(form.focusWidget(), fromType ? form.ui.cmdTreeLoc : form.ui.cmdTreeType);
            QTest::keyClick(form.focusWidget(), Qt::Key_Space);
            const QString picked = fromType ? "Wrenches|1|Vorlane\\Cabinet A|1" : "Vorlane\\Cabinet A|1|Cabinet B|2";
            QCOMPARE(folders(form), picked);
            explorer->picked.reset(); // the picker is cancelled
            QTest::keyClick(form.focusWidget(), Qt::Key_Space);
            QCOMPARE(folders(form), picked);
        });
        QVERIFY(!frmToolNewEdit::Startup("New", fromType, fromLocation, 0, 1, 2, "Wrenches", "Cabinet B"));
        QCOMPARE(explorer->calls, QStringList(2, fromType ? "pick location" : "pick type"));
    }

    void refusesInThisOrder_data()
    {
        columns<QString, QString, int, QString>("location", "type", "manufacturerLength", "message");
        row("no location", "", "", 256, "Location may not be blank!");
        row("no type", "Cabinet A", "", 256, "Tool Type may not be blank!");
        row("long manufacturer", "Cabinet A", "Wrenches", 256, "Manufacturer may not be longer than 255 characters!");
        row("no description", "Cabinet A", "Wrenches", 255, "Description may not be blank!");
    }

    void refusesInThisOrder()
    {
        const auto [location, type, manufacturerLength] =
            fetched<QString, QString, int>("location", "type", "manufacturerLength");
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            form.ui.txtLocation->setText(location);
            form.ui.txtType->setText(type);
            form.ui.cboMan->setText(QString(manufacturerLength, 'x'));
            form.ui.txtPartNumber->setFocus();
            QTest::keyClick(form.ui.txtPartNumber, Qt::Key_Return);
            QVERIFY(form.isVisible());
        });
        QVERIFY(!frmToolNewEdit::Startup("New", false, false, 0, 0, 0, {}, {}));
        QFETCH(QString, message);
        QCOMPARE(user.boxes(), QStringList(remark(message)));
        QCOMPARE(tools(), QStringList());
    }

    void addsAsManyToolsAsAsked_data()
    {
        columns<QString, int, QString>("quantity", "added", "message");
        row("three", "3", 3, "");
        row("more than usual", "101", 101, "");
        row("none", "0", 0, "The quantity is 0: no tool was added.");
        row("an emptied box is not its old value", "", 0, "The quantity is 0: no tool was added.");
        row("a sign between thousands is no part of a number", "1,0.1", 101, "");
        row("more than there are numbers", "2147483647", 0,
            "Unable to save data.\n\nError: The numbers of tools end at 32767; 32767 can be added.");
    }

    void addsAsManyToolsAsAsked()
    {
        const auto [quantity, added, message] = fetched<QString, int, QString>("quantity", "added", "message");
        ScriptedUser user(QMessageBox::Ok, message.isEmpty() ? 0 : 1);
        const bool refused = message.startsWith("Unable");
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            fill(form);
            form.ui.fpQuantity->setFocus();
            form.ui.fpQuantity->selectAll();
            QTest::keyClick(form.ui.fpQuantity, Qt::Key_Delete);
            QTest::keyClicks(form.ui.fpQuantity, quantity);
            QTest::keyClick(form.ui.fpQuantity, Qt::Key_Return);
            QCOMPARE(form.isVisible(), refused);
        });

        QCOMPARE(startNew(), !refused);

        QCOMPARE(tools(), QStringList(added, "2|Acme|TW-40|Torque wrench|12.5|0|1"));
        QCOMPARE(user.texts().join(""), message);
        QCOMPARE(explorer->calls.mid(1), QStringList("list node"));
    }

    void allOrNothing_data()
    {
        columns<bool>("cancelled");
        row("when the crib is full", false);
        row("when it is cancelled", true);
    }

    void allOrNothing()
    {
        QFETCH(bool, cancelled);
        if (!cancelled)
            Session::database().executeNative(
                "CREATE TRIGGER Full BEFORE INSERT ON Tools WHEN (SELECT Count(*) FROM Tools) >= 2"
                " BEGIN SELECT RAISE(ABORT, 'crib full'); END");
        ScriptedUser user(QMessageBox::Ok, cancelled ? 0 : 1);
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            fill(form);
            form.ui.fpQuantity->setValue(20000);
            QTimer pressCancel;
            connect(&pressCancel, &QTimer::timeout, &form, [&] {
                if (auto *progress = form.findChild<QProgressDialog *>())
                    progress->cancel();
            });
            if (cancelled)
                pressCancel.start(0);
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            QVERIFY(form.isVisible());
            QCOMPARE(form.ui.fpQuantity->value(), 20000);
        });

        QVERIFY(!startNew());

        QCOMPARE(tools(), QStringList());
        QCOMPARE(user.texts().join("").contains("crib full"), !cancelled);
    }

    void okAndNewKeepsTheFolderOfTheTree_data()
    {
        columns<QString, QString>("tree", "left");
        row("type", "type", "Tools\\Torque wrenches|2||");
        row("location", "location", "||Vorlane\\Cabinet A|1");
    }

    void okAndNewKeepsTheFolderOfTheTree()
    {
        QFETCH(QString, tree);
        explorer->mode = tree;
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            QCOMPARE(form.ui.cboMan->count(), 0);
            fill(form);
            form.ui.fpQuantity->setValue(2);
            QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
            QVERIFY(form.isVisible());
            QCOMPARE(form.ui.cboMan->itemText(0), "Acme");
            QCOMPARE(form.ui.cboMan->currentText() + form.ui.txtPartNumber->text() + form.ui.txtDescription->text(),
                     "");
            QCOMPARE(form.ui.fpQuantity->value(), 1);
            QCOMPARE(form.ui.fpCost->value(), 0);
            QTEST(folders(form), "left");
            QTest::keyClick(&form, Qt::Key_Escape);
        });
        QVERIFY(startNew());
        QCOMPARE(tools().size(), 2);
    }

    void editsOnlyWhatItShows()
    {
        crib->insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)",
                     {"2,1,'ACME','TW-40','Torque wrench',80,-1", "1,2,'Acme',null,'Wrench',null,0"});
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
            QCOMPARE(form.windowTitle(), "Edit Tool");
            QVERIFY(!form.ui.cmdOKNew->isVisible() && !form.ui.fpQuantity->isVisible() && !form.ui.lblQty->isVisible());
            QVERIFY(!form.ui.cmdTreeType->isEnabled() && !form.ui.cmdTreeLoc->isEnabled());
            QCOMPARE(form.ui.txtType->text(), "Torque wrenches");
            QCOMPARE(form.ui.txtLocation->text(), "Cabinet A");
            QCOMPARE(form.ui.cboMan->currentText(), "ACME");
            QCOMPARE(form.ui.txtPartNumber->text(), "TW-40");
            QTest::keyClicks(form.ui.txtType, "x");
            form.ui.txtDescription->setText("O'Brien's wrench");
            form.ui.txtPartNumber->clear();
            form.ui.fpCost->setValue(99.95);
            QTest::keyClick(form.ui.txtDescription, Qt::Key_Return);
        });
        QVERIFY(frmToolNewEdit::Startup("Edit", true, false, 1, 2, 1, {}, {}));
        QCOMPARE(tools(), QStringList({"2|ACME||O'Brien's wrench|99.95|-1|1", "1|Acme||Wrench||0|2"}));
        QCOMPARE(explorer->calls, QStringList("list node"));
    }

    void editedPriceStaysAsTheSuiteHasIt_data()
    {
        columns<QString>("price");
        row("cents", "0.29");
        row("parts of a cent", "0.1234");
        row("more than the box takes", "123456789.5");
        row("less than nothing", "-5");
    }

    void editedPriceStaysAsTheSuiteHasIt()
    {
        QFETCH(QString, price);
        crib->insert("Tools (Type,Location,Description,PricePer)", {"2,1,'Wrench'," + price});
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) { QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton); });
        QVERIFY(frmToolNewEdit::Startup("Edit", false, true, 1, 2, 1, {}, {}));
        QCOMPARE(crib->rows("Select PricePer from Tools"), QStringList(price));
    }

    void manufacturerEndsAt25Characters()
    {
        crib->insert("Tools (Type,Location,Manufacturer,Description)", {"2,1,'" + QString(25, 'm') + "','Bit'"});
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
            const QString full(25, 'm');
            QTest::keyClicks(form.ui.cboMan, full + "x%");
            QCOMPARE(form.ui.cboMan->currentText(), full);
            QTest::keyClick(form.ui.cboMan, Qt::Key_Backspace);
            QTest::keyClicks(form.ui.cboMan, "yz");
            QCOMPARE(form.ui.cboMan->currentText(), full.left(24) + 'y');

            QApplication::clipboard()->setText("The Amalgamated Wrench Company of Springfield");
            QTest::keyClick(form.ui.cboMan, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(form.ui.cboMan, Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(form.ui.cboMan->currentText(), "The Amalgamated Wrench Co");

            // Blanks at the ends do not count.
            form.ui.cboMan->setText(QString(24, 'm') + "   ");
            QTest::keyClicks(form.ui.cboMan, " ");
            QCOMPARE(form.ui.cboMan->currentText(), QString(24, 'm') + "    ");
        });
        startNew();
    }

    void pricesAreReadAlikeOnEveryDesktop_data()
    {
        columns<QString, QString, QString>("typed", "understood", "price");
        row("a point", "85.50", "$85.50", "85.5");
        row("a comma", "85,50", "$85.50", "85.5");
        row("a sign between thousands has no decimals behind two", "1,234", "$1.23", "1.23");
        row("an emptied box", "", "$0.00", "0");
    }

    void pricesAreReadAlikeOnEveryDesktop()
    {
        QFETCH(QString, typed);
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            fill(form);
            form.setLocale(QLocale(QLocale::German));
            form.ui.fpCost->setFocus();
            form.ui.fpCost->selectAll();
            QTest::keyClick(form.ui.fpCost, Qt::Key_Delete);
            QTest::keyClicks(form.ui.fpCost, typed);
            form.ui.txtDescription->setFocus();
            QTEST(form.ui.fpCost->text(), "understood");
            form.ui.cmdOK->click();
        });
        QVERIFY(startNew());
        QTEST(crib->rows("Select PricePer from Tools").join(""), "price");
    }

    void othersWereFaster_data()
    {
        columns<QString, QString>("meanwhile", "message");
        row("deleted", "Delete from Tools", "The tool was deleted or scrapped meanwhile.");
        row("changed", "Update Tools set PricePer=7",
            "The tool was changed meanwhile. Close this window and open it again.");
    }

    void othersWereFaster()
    {
        const auto [meanwhile, message] = fetched<QString, QString>("meanwhile", "message");
        crib->insert("Tools (Type,Location,Description,PricePer)", {"2,1,'Wrench',5"});
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            form.ui.txtDescription->setText("Hammer");
            crib->run({meanwhile});
            form.ui.cmdOK->click();
            QVERIFY(form.isVisible());
        });
        QVERIFY(!frmToolNewEdit::Startup("Edit", true, false, 1, 2, 1, {}, {}));
        QCOMPARE(user.texts(), QStringList("Unable to save data.\n\nError: " + message));
        QVERIFY(!tools().join("").contains("Hammer"));
        QCOMPARE(explorer->calls, QStringList("list node"));
    }

private:
    static QString folders(const frmToolNewEdit &form)
    {
        return form.ui.txtType->text() + '|' + form.ui.txtTypeId->text() + '|' + form.ui.txtLocation->text() + '|'
            + form.ui.txtLocationId->text();
    }
    static bool startNew()
    {
        return frmToolNewEdit::Startup("New", true, false, 0, 2, 0, "Tools\\Torque wrenches", {});
    }
    QStringList tools() const
    {
        return crib->rows(
            "Select Type,Manufacturer,PartNumber,Description,PricePer,Out,Location from Tools order by ID");
    }

    std::optional<CribDatabase> crib;
    std::optional<FakeExplorer> explorer;
};

QTEST_MAIN(TestToolNewEdit)
#include "tst_toolnewedit.moc"
