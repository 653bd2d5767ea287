#include "catalogue/frmScrapReasons.h"
#include "catalogue/frmScrapReasonsAddEdit.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/ScriptedUser.h"

class TestScrapReasons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setApplicationName("Vorlane Manager"); }
    void init();
    void cleanup() { crib.reset(); }
    void listsByDescription();
    void deleteAsksFirst_data();
    void deleteAsksFirst();
    void editorRefuses_data();
    void editorRefuses();
    void addsOneAfterAnother();
    void renames_data();
    void renames();
    void saysWhenTheReasonIsGone();

private:
    QStringList reasons() const { return crib->rows("Select ID,Description from ScrapReasons order by ID"); }

    std::optional<CribDatabase> crib;
};

namespace {

QStringList listed(const frmScrapReasons &form)
{
    QStringList texts;
    const QAbstractItemModel *model = form.ui.lvwMI->model();
    for (int row = 0; row < model->rowCount(); ++row)
        texts.append(model->index(row, 0).data().toString());
    return texts;
}

void select(frmScrapReasons &form, int row) { form.ui.lvwMI->setCurrentIndex(form.ui.lvwMI->model()->index(row, 0)); }

}

void TestScrapReasons::init()
{
    crib.emplace();
    crib->run({
        "INSERT INTO ScrapReasons (Description) VALUES('bent')",
        "INSERT INTO Scrap (ToolID,Description,Reason) VALUES(9,'Wrench',1)",
    });
}

void TestScrapReasons::listsByDescription()
{
    whenModal<frmScrapReasons>([](frmScrapReasons &form) {
        QCOMPARE(form.windowTitle(), "Scrap Reasons");
        QCOMPARE(form.ui.lvwMI->model()->columnCount(), 1);
        QCOMPARE(form.ui.lvwMI->model()->headerData(0, Qt::Horizontal).toString(), "Description");
        QCOMPARE(listed(form), QStringList({"bent", "Broken", "Lost"}));
        QTest::mouseClick(form.ui.cmdClose, Qt::LeftButton);
        QVERIFY(!form.isVisible());
    });
    frmScrapReasons::showModal();
}

void TestScrapReasons::deleteAsksFirst_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<QStringList>("left");

    QTest::newRow("No") << QMessageBox::No << QStringList({"1|Broken", "2|Lost", "3|bent"});
    QTest::newRow("Yes, though scrap records have it") << QMessageBox::Yes << QStringList({"2|Lost", "3|bent"});
}

void TestScrapReasons::deleteAsksFirst()
{
    QFETCH(QMessageBox::StandardButton, answer);
    ScriptedUser user;
    user.answers(answer);
    whenModal<frmScrapReasons>([&](frmScrapReasons &form) {
        select(form, 1);
        QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
        QCOMPARE(listed(form).contains("Broken"), answer == QMessageBox::No);
    });

    frmScrapReasons::showModal();

    QVERIFY(user.done());
    QCOMPARE(user.seen[0].text, "Delete this item?");
    QCOMPARE(user.seen[0].caption, "Delete");
    QCOMPARE(user.seen[0].icon, QMessageBox::Question);
    QCOMPARE(user.seen[0].buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(user.seen[0].defaultButton, QMessageBox::No);
    QTEST(reasons(), "left");
    QCOMPARE(crib->rows("Select Reason from Scrap"), QStringList("1"));
}

void TestScrapReasons::editorRefuses_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    QTest::newRow("nothing") << "New"
                             << ""
                             << "Description may not be blank!";
    QTest::newRow("a new one that is there") << "New"
                                             << "Broken"
                                             << "Broken already exists!";
    QTest::newRow("in other case") << "New"
                                   << "LOST"
                                   << "LOST already exists!";
    QTest::newRow("another one's words") << "Edit"
                                         << "Lost"
                                         << "Lost already exists!";
}

void TestScrapReasons::editorRefuses()
{
    QFETCH(QString, mode);
    QFETCH(QString, text);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmScrapReasonsAddEdit>([&](frmScrapReasonsAddEdit &form) {
        form.ui.txtDescription->setText(text);
        form.ui.cmdOK->setFocus();
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(form.isVisible());
        QCOMPARE(form.focusWidget(), form.ui.txtDescription);
    });

    QVERIFY(!frmScrapReasonsAddEdit::Startup(mode, 1));

    QVERIFY(user.done());
    QTEST(user.seen[0].text, "message");
    QCOMPARE(user.seen[0].caption, "Vorlane Manager");
    QCOMPARE(user.seen[0].icon, QMessageBox::Warning);
    QCOMPARE(reasons(), QStringList({"1|Broken", "2|Lost", "3|bent"}));
}

void TestScrapReasons::addsOneAfterAnother()
{
    whenModal<frmScrapReasons>([](frmScrapReasons &form) {
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
        QCOMPARE(listed(form), QStringList({"bent", "Broken", "Lost", "Nobody's", "Worn out"}));
    });
    frmScrapReasons::showModal();
    QCOMPARE(reasons().mid(3), QStringList({"4|Worn out", "5|Nobody's"}));
}

void TestScrapReasons::renames_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("unchanged") << "Broken";
    QTest::newRow("other capitals") << "BROKEN";
    QTest::newRow("with an apostrophe") << "Smith's fault";
}

void TestScrapReasons::renames()
{
    QFETCH(QString, text);
    whenModal<frmScrapReasons>([&](frmScrapReasons &form) {
        whenModal<frmScrapReasonsAddEdit>([&](frmScrapReasonsAddEdit &editor) {
            QCOMPARE(editor.windowTitle(), "Edit Scrap Reason");
            QVERIFY(!editor.ui.cmdOKNew->isVisible());
            QCOMPARE(editor.ui.txtDescription->text(), "Broken");
            editor.ui.txtDescription->setText(text);
            QTest::mouseClick(editor.ui.cmdOK, Qt::LeftButton);
        });
        select(form, 1);
        QTest::keyClick(form.ui.lvwMI, Qt::Key_Return);
        QVERIFY(listed(form).contains(text));
    });
    frmScrapReasons::showModal();
    QCOMPARE(reasons().first(), "1|" + text);
}

void TestScrapReasons::saysWhenTheReasonIsGone()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmScrapReasonsAddEdit>([](frmScrapReasonsAddEdit &) {});
    QVERIFY(!frmScrapReasonsAddEdit::Startup("Edit", 77));
    QCOMPARE(user.seen.value(0).text, "77 not found! Scrap Reasons table may need to be fixed!");
    QCOMPARE(user.seen.value(0).icon, QMessageBox::Critical);
    QCOMPARE(user.seen.value(0).caption, "Vorlane Manager");
}

QTEST_MAIN(TestScrapReasons)
#include "tst_scrapreasons.moc"
