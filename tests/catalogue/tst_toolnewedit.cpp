#include "catalogue/frmToolNewEdit.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QCompleter>

class TestToolNewEdit : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void presetsTheFolderOfTheTree_data();
    void presetsTheFolderOfTheTree();
    void refusesInThisOrder_data();
    void refusesInThisOrder();
    void addsAsManyToolsAsAsked_data();
    void addsAsManyToolsAsAsked();
    void failurePartWayLeavesTheRowsAlreadyAdded();
    void okAndNewKeepsTheFolderOfTheTree_data();
    void okAndNewKeepsTheFolderOfTheTree();
    void editsOnlyWhatItShows();
    void editedPriceStaysAsTheSuiteHasIt_data();
    void editedPriceStaysAsTheSuiteHasIt();
    void manufacturerEndsAt25Characters();
    void forbiddenCharactersAreNotTypedButMayBePasted();
    void pointReachesTheStatementWhateverTheLocale();
    void saysWhenTheToolIsGone();

private:
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

void TestToolNewEdit::init()
{
    crib.emplace();
    explorer.emplace();
    explorer->picked = PickedFolder{.id = 1, .path = "Vorlane\\Cabinet A"};
}

void TestToolNewEdit::cleanup()
{
    explorer.reset();
    crib.reset();
}

void TestToolNewEdit::presetsTheFolderOfTheTree_data()
{
    QTest::addColumn<bool>("fromType");
    QTest::addColumn<bool>("fromLocation");
    QTest::addColumn<QStringList>("preset");

    QTest::newRow("from the types") << true << false << QStringList({"Wrenches", "1", "", ""});
    QTest::newRow("from the locations") << false << true << QStringList({"", "", "Cabinet B", "2"});
}

void TestToolNewEdit::presetsTheFolderOfTheTree()
{
    QFETCH(bool, fromType);
    QFETCH(bool, fromLocation);
    whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
        QCOMPARE(form.windowTitle(), "New Tool");
        QTEST(QStringList({form.ui.txtType->text(), form.ui.txtTypeId->text(), form.ui.txtLocation->text(),
                           form.ui.txtLocationId->text()}),
              "preset");
        QCOMPARE(form.focusWidget(), fromType ? form.ui.cmdTreeLoc : form.ui.cmdTreeType);
        QTest::keyClick(form.focusWidget(), Qt::Key_Space);
        QCOMPARE(fromType ? form.ui.txtLocation->text() : form.ui.txtType->text(), "Vorlane\\Cabinet A");
        QCOMPARE(fromType ? form.ui.txtLocationId->text() : form.ui.txtTypeId->text(), "1");
        explorer->picked.reset(); // the picker is cancelled
        QTest::keyClick(form.focusWidget(), Qt::Key_Space);
        QCOMPARE(fromType ? form.ui.txtLocation->text() : form.ui.txtType->text(), "Vorlane\\Cabinet A");
    });
    QVERIFY(!frmToolNewEdit::Startup("New", fromType, fromLocation, 0, 1, 2, "Wrenches", "Cabinet B"));
    QCOMPARE(explorer->calls, QStringList(2, fromType ? "pick location" : "pick type"));
}

void TestToolNewEdit::refusesInThisOrder_data()
{
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("manufacturerLength");
    QTest::addColumn<QString>("message");

    QTest::newRow("no location") << ""
                                 << "" << 256 << "Location may not be blank!";
    QTest::newRow("no type") << "Cabinet A"
                             << "" << 256 << "Tool Type may not be blank!";
    QTest::newRow("long manufacturer") << "Cabinet A"
                                       << "Wrenches" << 256 << "Manufacturer may not be longer than 255 characters!";
    QTest::newRow("no description") << "Cabinet A"
                                    << "Wrenches" << 255 << "Description may not be blank!";
}

void TestToolNewEdit::refusesInThisOrder()
{
    QFETCH(QString, location);
    QFETCH(QString, type);
    QFETCH(int, manufacturerLength);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
        form.ui.txtLocation->setText(location);
        form.ui.txtType->setText(type);
        form.ui.cboMan->setText(QString(manufacturerLength, 'x'));
        form.ui.txtPartNumber->setFocus();
        QTest::keyClick(form.ui.txtPartNumber, Qt::Key_Return);
        QVERIFY(form.isVisible());
    });

    QVERIFY(!frmToolNewEdit::Startup("New", false, false, 0, 0, 0, {}, {}));

    QVERIFY(user.done());
    QTEST(user.seen[0].text, "message");
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(user.seen[0].caption, "System Message");
    QCOMPARE(tools(), QStringList());
}

void TestToolNewEdit::addsAsManyToolsAsAsked_data()
{
    QTest::addColumn<int>("quantity");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<int>("added");

    const QMessageBox::StandardButton unasked = QMessageBox::NoButton;
    QTest::newRow("one") << 1 << unasked << 1;
    QTest::newRow("three") << 3 << unasked << 3;
    QTest::newRow("none") << 0 << unasked << 0;
    QTest::newRow("a hundred") << 100 << unasked << 100;
    QTest::newRow("more, meant") << 101 << QMessageBox::Yes << 101;
    QTest::newRow("more, a slip") << 101 << QMessageBox::No << 0;
}

void TestToolNewEdit::addsAsManyToolsAsAsked()
{
    QFETCH(int, quantity);
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(int, added);
    ScriptedUser user;
    if (answer != QMessageBox::NoButton)
        user.answers(answer);
    whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
        fill(form);
        form.ui.fpQuantity->setFocus();
        form.ui.fpQuantity->selectAll();
        QTest::keyClicks(form.ui.fpQuantity, QString::number(quantity));
        QTest::keyClick(form.ui.fpQuantity, Qt::Key_Return);
        QCOMPARE(form.isVisible(), answer == QMessageBox::No);
    });

    QCOMPARE(startNew(), answer != QMessageBox::No);

    QCOMPARE(tools(), QStringList(added, "2|Acme|TW-40|Torque wrench|12.5|0|1"));
    QCOMPARE(explorer->calls.mid(1), answer == QMessageBox::No ? QStringList() : QStringList("list node"));
    if (!user.seen.isEmpty())
        QCOMPARE(user.seen[0].defaultButton, QMessageBox::No);
}

void TestToolNewEdit::failurePartWayLeavesTheRowsAlreadyAdded()
{
    // A crib that holds two tools and no more.
    Session::database().executeNative(
        "CREATE TRIGGER Full BEFORE INSERT ON Tools WHEN (SELECT Count(*) FROM Tools) >= 2"
        " BEGIN SELECT RAISE(ABORT, 'crib full'); END");
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
        fill(form);
        form.ui.fpQuantity->setValue(5);
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(form.isVisible());
        QCOMPARE(form.ui.txtDescription->text(), "Torque wrench");
    });

    QVERIFY(!startNew());

    QVERIFY(user.done());
    QCOMPARE(user.seen[0].text.left(29), "Unable to save data.\n\nError: ");
    QVERIFY(user.seen[0].text.contains("crib full"));
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(tools().size(), 2);
    QCOMPARE(explorer->calls, QStringList("pick location"));
}

void TestToolNewEdit::okAndNewKeepsTheFolderOfTheTree_data()
{
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QStringList>("left");

    QTest::newRow("type") << "type" << QStringList({"Tools\\Torque wrenches", "2", "", ""});
    QTest::newRow("location") << "location" << QStringList({"", "", "Vorlane\\Cabinet A", "1"});
}

void TestToolNewEdit::okAndNewKeepsTheFolderOfTheTree()
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
        QCOMPARE(form.ui.cboMan->currentText() + form.ui.txtPartNumber->text() + form.ui.txtDescription->text(), "");
        QCOMPARE(form.ui.fpQuantity->value(), 1);
        QCOMPARE(form.ui.fpCost->value(), 0);
        QTEST(QStringList({form.ui.txtType->text(), form.ui.txtTypeId->text(), form.ui.txtLocation->text(),
                           form.ui.txtLocationId->text()}),
              "left");
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    QVERIFY(startNew());
    QCOMPARE(tools().size(), 2);
}

void TestToolNewEdit::editsOnlyWhatItShows()
{
    crib->run({"INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
               " VALUES(2,1,'ACME','TW-40','Torque wrench',80,-1)",
               "INSERT INTO Tools (Type,Location,Manufacturer,Description) VALUES(1,2,'Acme','Wrench')"});
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

void TestToolNewEdit::editedPriceStaysAsTheSuiteHasIt_data()
{
    QTest::addColumn<QString>("price");
    QTest::newRow("cents") << "0.29";
    QTest::newRow("parts of a cent") << "0.1234";
    QTest::newRow("more than the box takes") << "123456789.5";
    QTest::newRow("less than nothing") << "-5";
}

void TestToolNewEdit::editedPriceStaysAsTheSuiteHasIt()
{
    QFETCH(QString, price);
    crib->run({"INSERT INTO Tools (Type,Location,Description,PricePer) VALUES(2,1,'Wrench'," + price + ")"});
    whenModal<frmToolNewEdit>([](frmToolNewEdit &form) { QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton); });
    QVERIFY(frmToolNewEdit::Startup("Edit", false, true, 1, 2, 1, {}, {}));
    QCOMPARE(crib->rows("Select PricePer from Tools"), QStringList(price));
}

void TestToolNewEdit::manufacturerEndsAt25Characters()
{
    crib->run(
        {"INSERT INTO Tools (Type,Location,Manufacturer,Description) VALUES(2,1,'" + QString(25, 'm') + "','Bit')"});
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

        // Not even into its middle, while the known manufacturers are offered.
        form.ui.cboMan->setText({});
        form.ui.cboMan->setFocus();
        QTest::keyClicks(form.ui.cboMan, full);
        QWidget *known = form.ui.cboMan->completer()->popup();
        QVERIFY(known->isVisible());
        form.ui.cboMan->lineEdit()->setCursorPosition(3);
        QTest::keyClicks(known, "x");
        QCOMPARE(form.ui.cboMan->currentText(), full);

        // Blanks at the ends do not count.
        form.ui.cboMan->setText(QString(24, 'm') + "   ");
        QTest::keyClicks(form.ui.cboMan, " ");
        QCOMPARE(form.ui.cboMan->currentText(), QString(24, 'm') + "    ");
    });
    startNew();
}

void TestToolNewEdit::forbiddenCharactersAreNotTypedButMayBePasted()
{
    whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
        QTest::mouseClick(form.ui.cmdTreeLoc, Qt::LeftButton);
        for (QWidget *box :
             std::initializer_list<QWidget *>{form.ui.cboMan, form.ui.txtPartNumber, form.ui.txtDescription})
            QTest::keyClicks(box, "a|b'c\\d\"e");
        QCOMPARE(form.ui.cboMan->currentText(), "abcde");
        QCOMPARE(form.ui.txtPartNumber->text(), "abcde");
        QCOMPARE(form.ui.txtDescription->text(), "abcde");
        QApplication::clipboard()->setText("'s 1/2\" wrench\\");
        QTest::keyClick(form.ui.txtDescription, Qt::Key_V, Qt::ControlModifier);
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
    });
    QVERIFY(startNew());
    QCOMPARE(tools(), QStringList("2|abcde|abcde|abcde's 1/2\" wrench\\|0|0|1"));
}

void TestToolNewEdit::pointReachesTheStatementWhateverTheLocale()
{
    whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
        fill(form);
        form.setLocale(QLocale(QLocale::German));
        form.ui.fpCost->selectAll();
        QTest::keyClicks(form.ui.fpCost, "1234,56");
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
    });
    QVERIFY(startNew());
    QCOMPARE(crib->rows("Select PricePer from Tools"), QStringList("1234.56"));
}

void TestToolNewEdit::saysWhenTheToolIsGone()
{
    QVERIFY_EXCEPTION_THROWN(frmToolNewEdit::Startup("Edit", true, false, 5, 2, 1, {}, {}), EngineError);
}

QTEST_MAIN(TestToolNewEdit)
#include "tst_toolnewedit.moc"
