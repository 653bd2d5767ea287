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

    void refusesInThisOrder()
    {
        ScriptedUser user(QMessageBox::Ok, 4);
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
            QCOMPARE(form.windowTitle(), "New Tool");
            form.ui.cboMan->setText(QString(256, 'x'));
            const auto refused = [&] {
                form.ui.txtPartNumber->setFocus();
                QTest::keyClick(form.ui.txtPartNumber, Qt::Key_Return);
            };
            refused();
            form.ui.txtLocation->setText("Cabinet A");
            refused();
            form.ui.txtType->setText("Wrenches");
            refused();
            form.ui.cboMan->setText(QString(255, 'x')); // the suite may have such names; here they end at 25
            refused();
            QVERIFY(form.isVisible());
            QApplication::clipboard()->setText("The Amalgamated Wrench Company of Springfield");
            QTest::keyClick(form.ui.cboMan, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(form.ui.cboMan, Qt::Key_V, Qt::ControlModifier);
            QTest::keyClicks(form.ui.cboMan, "x");
            QCOMPARE(form.ui.cboMan->currentText(), "The Amalgamated Wrench Co");
        });
        QVERIFY(!frmToolNewEdit::Startup("New", false, false, 0, 0, 0, {}, {}));
        QCOMPARE(user.boxes(),
                 QStringList({remark("Location may not be blank!"), remark("Tool Type may not be blank!"),
                              remark("Manufacturer may not be longer than 255 characters!"),
                              remark("Description may not be blank!")}));
        QCOMPARE(tools(), QStringList());
    }

    void addsAsManyToolsAsAsked_data()
    {
        row("more than usual", "101", 101, "");
        row("none", "0", 0, "The quantity is 0: no tool was added.");
        row("an emptied box is not its old value", "", 0, "The quantity is 0: no tool was added.");
        row("a sign between thousands is no part of a number", "1,0.1", 101, "");
        row("more than there are numbers", "2147483647", 0,
            "Unable to save data.\n\nError: The numbers of tools end at 32767; 32767 can be added.");
    }

    void addsAsManyToolsAsAsked()
    {
        const auto [quantity, added, message] = fetched<QString, int, QString>();
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

    void allOrNothing()
    {
        refuse(Session::database(), "INSERT", "Tools", "(SELECT Count(*) FROM [Tools]) >= 2");
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
            fill(form);
            form.ui.fpQuantity->setValue(20000);
            form.ui.cmdOK->click();
            refuseNoMore(Session::database());
            QTimer pressCancel;
            connect(&pressCancel, &QTimer::timeout, &form, [&] {
                if (auto *progress = form.findChild<QProgressDialog *>())
                    progress->cancel();
            });
            pressCancel.start(0);
            form.ui.cmdOK->click();
            QVERIFY(form.isVisible());
            QCOMPARE(form.ui.fpQuantity->value(), 20000);
        });
        QVERIFY(!startNew());
        QCOMPARE(tools(), QStringList());
        QVERIFY(user.texts().join("").contains("refused"));
    }

    void okAndNewKeepsTheFolderOfTheTree()
    {
        for (const auto &[tree, left] :
             {std::pair("type", "Tools\\Torque wrenches|2||"), {"location", "||Vorlane\\Cabinet A|1"}}) {
            explorer->mode = tree;
            explorer->picked = PickedFolder{.id = 1, .path = "Vorlane\\Cabinet A"};
            whenModal<frmToolNewEdit>([&, left = left](frmToolNewEdit &form) {
                fill(form);
                explorer->picked.reset(); // the picker is cancelled
                QTest::mouseClick(form.ui.cmdTreeLoc, Qt::LeftButton);
                QCOMPARE(folders(form), "Tools\\Torque wrenches|2|Vorlane\\Cabinet A|1");
                form.ui.fpQuantity->setValue(2);
                QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
                QVERIFY(form.isVisible());
                QCOMPARE(form.ui.cboMan->itemText(0), "Acme");
                QCOMPARE(form.ui.cboMan->currentText() + form.ui.txtPartNumber->text() + form.ui.txtDescription->text(),
                         "");
                QCOMPARE(form.ui.fpQuantity->text() + form.ui.fpCost->text(), "1$0.00");
                QCOMPARE(folders(form), left);
            });
            QVERIFY(startNew());
        }
        QCOMPARE(tools().size(), 4);
    }

    void editsOnlyWhatItShows()
    {
        crib->insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)",
                     {"2,1,'ACME','TW-40','Torque wrench',80,-1", "1,2,'Acme',null,'Wrench',null,0"});
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
            QCOMPARE(form.windowTitle(), "Edit Tool");
            QVERIFY(!form.ui.cmdOKNew->isVisible() && !form.ui.fpQuantity->isVisible() && !form.ui.lblQty->isVisible());
            QVERIFY(!form.ui.cmdTreeType->isEnabled() && !form.ui.cmdTreeLoc->isEnabled());
            QCOMPARE(form.ui.txtType->text() + form.ui.txtLocation->text(), "Torque wrenchesCabinet A");
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

    void editedPriceStaysAsTheSuiteHasIt()
    {
        // Cents, parts of a cent, more than the box takes, less than nothing.
        const QStringList prices{"0.29", "0.1234", "123456789.5", "-5"};
        for (int i = 0; i < prices.size(); ++i) {
            crib->insert("Tools (Type,Location,Description,PricePer)", {"2,1,'Wrench'," + prices[i]});
            whenModal<frmToolNewEdit>([](frmToolNewEdit &form) { QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton); });
            QVERIFY(frmToolNewEdit::Startup("Edit", false, true, i + 1, 2, 1, {}, {}));
        }
        QCOMPARE(crib->rows("Select PricePer from Tools order by ID"), prices);
    }

    void pricesAreReadAlikeOnEveryDesktop()
    {
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            fill(form);
            form.setLocale(QLocale(QLocale::German));
            for (const auto &[typed, understood] : {std::pair("85.50", "$85.50"),
                                                    {"85,50", "$85.50"},
                                                    // A sign between thousands has no decimals behind two.
                                                    {"1,234", "$1.23"},
                                                    {"", "$0.00"}}) {
                form.ui.fpCost->setFocus();
                form.ui.fpCost->selectAll();
                QTest::keyClick(form.ui.fpCost, Qt::Key_Delete);
                QTest::keyClicks(form.ui.fpCost, typed);
                form.ui.txtDescription->setFocus();
                QCOMPARE(form.ui.fpCost->text(), understood);
            }
        });
        QVERIFY(!startNew());
    }

    void othersWereFaster_data()
    {
        const QString question =
            "System Message (question): This record was changed at another place since. Overwrite it?"
            " [Yes] [No]*";
        row("deleted", "Delete from Tools",
            remark("Unable to save data.\n\nError: The tool was deleted or scrapped meanwhile."), QMessageBox::Ok);
        row("changed, and left so", "Update Tools set PricePer=7", question, QMessageBox::No);
        row("changed, and overwritten", "Update Tools set PricePer=7", question, QMessageBox::Yes);
    }

    void othersWereFaster()
    {
        const auto [meanwhile, message, answer] = fetched<QString, QString, int>();
        const bool overwrites = answer == QMessageBox::Yes;
        crib->insert("Tools (Type,Location,Description,PricePer)", {"2,1,'Wrench',5"});
        ScriptedUser user{QMessageBox::StandardButton(answer)};
        whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
            form.ui.txtDescription->setText("Hammer");
            crib->run({meanwhile});
            form.ui.cmdOK->click();
            QCOMPARE(form.isVisible(), !overwrites);
        });
        QCOMPARE(frmToolNewEdit::Startup("Edit", true, false, 1, 2, 1, {}, {}), overwrites);
        QCOMPARE(inOneLine(user.seen.value(0)), message);
        QCOMPARE(tools().join("").contains("Hammer"), overwrites);
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
