#include "catalogue/frmScrapReasons.h"
#include "catalogue/frmScrapReasonsAddEdit.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"

class TestScrapReasons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setApplicationName("Vorlane Manager"); }

    void init()
    {
        crib.emplace();
        crib->insert("ScrapReasons (Description)", {"'bent'"});
        crib->insert("Scrap (ToolID,Description,Reason)", {"9,'Wrench',1"});
    }

    void cleanup() { crib.reset(); }

    void deleteAsksFirst_data()
    {
        columns<QMessageBox::StandardButton, QStringList>("answer", "left");
        row("No", QMessageBox::No, QStringList({"1|Broken", "2|Lost", "3|bent"}));
        row("Yes, though scrap records have it", QMessageBox::Yes, QStringList({"2|Lost", "3|bent"}));
    }

    void deleteAsksFirst()
    {
        QFETCH(QMessageBox::StandardButton, answer);
        ScriptedUser user(answer);
        whenModal<frmScrapReasons>([&](frmScrapReasons &form) {
            form.ui.lvwMI->setCurrentIndex(form.ui.lvwMI->model()->index(1, 0));
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
            QCOMPARE(textsOf(form.ui.lvwMI->model()).contains("Broken"), answer == QMessageBox::No);
        });
        frmScrapReasons::showModal();
        QCOMPARE(user.boxes(), QStringList("Delete (question): Delete this item? [Yes] [No]*"));
        QTEST(reasons(), "left");
        QCOMPARE(crib->rows("Select Reason from Scrap"), QStringList("1"));
    }

    void editorRefuses_data()
    {
        columns<QString, QString, QString>("mode", "text", "message");
        row("nothing", "New", "", "Description may not be blank!");
        row("a new one that is there", "New", "Broken", "Broken already exists!");
        row("in other case", "New", "LOST", "LOST already exists!");
        row("another one's words", "Edit", "Lost", "Lost already exists!");
    }

    void editorRefuses()
    {
        QFETCH(QString, mode);
        QFETCH(QString, text);
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmScrapReasonsAddEdit>([&](frmScrapReasonsAddEdit &form) {
            form.ui.txtDescription->setText(text);
            form.ui.cmdOK->setFocus();
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            QVERIFY(form.isVisible());
            QCOMPARE(form.focusWidget(), form.ui.txtDescription);
        });
        QVERIFY(!frmScrapReasonsAddEdit::Startup(mode, 1));
        QFETCH(QString, message);
        QCOMPARE(user.boxes(), QStringList("Vorlane Manager (warning): " + message + " [OK]"));
        QCOMPARE(reasons(), QStringList({"1|Broken", "2|Lost", "3|bent"}));
    }

    void addsOneAfterAnother()
    {
        whenModal<frmScrapReasons>([](frmScrapReasons &form) {
            QCOMPARE(form.windowTitle(), "Scrap Reasons");
            QCOMPARE(form.ui.lvwMI->model()->headerData(0, Qt::Horizontal).toString(), "Description");
            QCOMPARE(textsOf(form.ui.lvwMI->model()), QStringList({"bent", "Broken", "Lost"}));
            whenModal<frmScrapReasonsAddEdit>([](frmScrapReasonsAddEdit &editor) {
                QCOMPARE(editor.windowTitle(), "New Scrap Reason");
                QTest::keyClicks(editor.ui.txtDescription, "Worn out");
                QTest::mouseClick(editor.ui.cmdOKNew, Qt::LeftButton);
                QCOMPARE(editor.ui.txtDescription->text(), QString());
                QCOMPARE(editor.focusWidget(), editor.ui.txtDescription);
                QTest::keyClicks(editor.ui.txtDescription, "Nobody's");
                QTest::keyClick(editor.ui.txtDescription, Qt::Key_Return);
            });
            QTest::mouseClick(form.ui.cmdNew, Qt::LeftButton);
            QCOMPARE(textsOf(form.ui.lvwMI->model()), QStringList({"bent", "Broken", "Lost", "Nobody's", "Worn out"}));
            QTest::mouseClick(form.ui.cmdClose, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        frmScrapReasons::showModal();
        QCOMPARE(reasons().mid(3), QStringList({"4|Worn out", "5|Nobody's"}));
    }

    void renames_data()
    {
        columns<QString>("text");
        row("unchanged", "Broken");
        row("other capitals", "BROKEN");
        row("with an apostrophe", "Smith's fault");
    }

    void renames()
    {
        QFETCH(QString, text);
        const ScriptedUser user; // nothing is objected to
        whenModal<frmScrapReasons>([&](frmScrapReasons &form) {
            whenModal<frmScrapReasonsAddEdit>([&](frmScrapReasonsAddEdit &editor) {
                QCOMPARE(editor.windowTitle(), "Edit Scrap Reason");
                QVERIFY(!editor.ui.cmdOKNew->isVisible());
                QCOMPARE(editor.ui.txtDescription->text(), "Broken");
                editor.ui.txtDescription->setText(text);
                QTest::mouseClick(editor.ui.cmdOK, Qt::LeftButton);
            });
            form.ui.lvwMI->setCurrentIndex(form.ui.lvwMI->model()->index(1, 0));
            QTest::keyClick(form.ui.lvwMI, Qt::Key_Return);
            QVERIFY(textsOf(form.ui.lvwMI->model()).contains(text));
        });
        frmScrapReasons::showModal();
        QCOMPARE(reasons().first(), "1|" + text);
    }

    void saysWhenTheReasonIsGone()
    {
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmScrapReasonsAddEdit>([](frmScrapReasonsAddEdit &) {});
        QVERIFY(!frmScrapReasonsAddEdit::Startup("Edit", 77));
        QCOMPARE(user.boxes(),
                 QStringList("Vorlane Manager (critical): 77 not found! Scrap Reasons table may need to be "
                             "fixed! [OK]"));
    }

private:
    QStringList reasons() const { return crib->rows("Select ID,Description from ScrapReasons order by ID"); }

    std::optional<CribDatabase> crib;
};

QTEST_MAIN(TestScrapReasons)
#include "tst_scrapreasons.moc"
