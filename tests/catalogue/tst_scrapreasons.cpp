#include "catalogue/frmScrapReasons.h"
#include "catalogue/frmScrapReasonsAddEdit.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"

class TestScrapReasons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setApplicationName("Vorlane Manager"); }

    void listIsWorkedThrough()
    {
        CribDatabase crib;
        crib.insert("ScrapReasons (Description)", {"'bent'"});
        crib.insert("Scrap (ToolID,Description,Reason)", {"9,'Wrench',1"});
        ScriptedUser user(QMessageBox::Ok, 3);
        user.answers(QMessageBox::No).answers(QMessageBox::Yes);
        whenModal<frmScrapReasons>([](frmScrapReasons &form) {
            QTreeView *list = form.ui.lvwMI;
            const auto at = [&](int row) { list->setCurrentIndex(list->model()->index(row, 0)); };
            QCOMPARE(textsOf(list->model()), QStringList({"bent", "Broken", "Lost"}));
            at(1);
            whenModal<frmScrapReasonsAddEdit>([](frmScrapReasonsAddEdit &editor) {
                QCOMPARE(editor.windowTitle(), "New Scrap Reason");
                QTest::mouseClick(editor.ui.cmdOK, Qt::LeftButton); // nothing
                QTest::keyClicks(editor.ui.txtDescription, "LOST");
                QTest::mouseClick(editor.ui.cmdOK, Qt::LeftButton);
                QVERIFY(editor.isVisible() && editor.ui.txtDescription->hasFocus());
                editor.ui.txtDescription->setText("Worn out");
                QTest::mouseClick(editor.ui.cmdOKNew, Qt::LeftButton);
                QCOMPARE(editor.ui.txtDescription->text(), QString());
                QTest::keyClicks(editor.ui.txtDescription, "Nobody's");
                QTest::keyClick(editor.ui.txtDescription, Qt::Key_Return);
            });
            QTest::mouseClick(form.ui.cmdNew, Qt::LeftButton);
            QCOMPARE(textsOf(list->model()), QStringList({"bent", "Broken", "Lost", "Nobody's", "Worn out"}));
            whenModal<frmScrapReasonsAddEdit>([](frmScrapReasonsAddEdit &editor) {
                QCOMPARE(editor.windowTitle(), "Edit Scrap Reason");
                QVERIFY(!editor.ui.cmdOKNew->isVisible());
                editor.ui.txtDescription->setText("Lost"); // another one's words
                QTest::mouseClick(editor.ui.cmdOK, Qt::LeftButton);
                editor.ui.txtDescription->setText("BROKEN"); // its own
                QTest::mouseClick(editor.ui.cmdOK, Qt::LeftButton);
            });
            QTest::keyClick(list, Qt::Key_Return);
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton); // no
            QCOMPARE(textsOf(list->model()), QStringList({"bent", "BROKEN", "Lost", "Nobody's", "Worn out"}));
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton); // yes, though scrap records have it
            QCOMPARE(textsOf(list->model()), QStringList({"bent", "Lost", "Nobody's", "Worn out"}));
            QCOMPARE(list->currentIndex().row(), 1);
        });
        frmScrapReasons::showModal();
        QCOMPARE(user.boxes(),
                 QStringList({"Vorlane Manager (warning): Description may not be blank! [OK]",
                              "Vorlane Manager (warning): LOST already exists! [OK]",
                              "Vorlane Manager (warning): Lost already exists! [OK]",
                              "Delete (question): Delete this item? [Yes] [No]*",
                              "Delete (question): Delete this item? [Yes] [No]*"}));
        QCOMPARE(crib.rows("Select ID,Description from ScrapReasons order by ID"),
                 QStringList({"2|Lost", "3|bent", "4|Worn out", "5|Nobody's"}));
        QCOMPARE(crib.rows("Select Reason from Scrap"), QStringList("1"));
    }
};

QTEST_MAIN(TestScrapReasons)
#include "tst_scrapreasons.moc"
