#include "catalogue/FolderEditor.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>

class TestFolderEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void windowsBearTheirWords_data();
    void windowsBearTheirWords();
    void refuses_data();
    void refuses();
    void newNameMustDifferFromAll_data();
    void newNameMustDifferFromAll();
    void renameMayMeetOneOther();
    void okAndNewGoesOnWithTheNextSibling();
    void renamesTheFolderItWasOpenedFor();
    void apostropheIsNotTypedButMayBePasted();
    void worksWithoutExplorer();
    void engineErrorKeepsTheText();

private:
    std::optional<CribDatabase> crib;
    std::optional<FakeExplorer> explorer;
};

void TestFolderEditor::init()
{
    crib.emplace();
    explorer.emplace();
}

void TestFolderEditor::cleanup()
{
    explorer.reset();
    crib.reset();
}

void TestFolderEditor::windowsBearTheirWords_data()
{
    QTest::addColumn<bool>("isLocation");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("text");

    QTest::newRow("new location") << true << "New"
                                  << "frmLocationNewEdit"
                                  << "New Tool Location in Tools\\Hall 3"
                                  << "txtLocation"
                                  << "";
    QTest::newRow("location") << true << "Edit"
                              << "frmLocationNewEdit"
                              << "Edit Tool Location"
                              << "txtLocation"
                              << "Cabinet B";
    QTest::newRow("new type") << false << "New"
                              << "frmTypeNewEdit"
                              << "New Tool Type in Tools\\Hall 3"
                              << "txtType"
                              << "";
    QTest::newRow("type") << false << "Edit"
                          << "frmTypeNewEdit"
                          << "Edit Tool Type"
                          << "txtType"
                          << "Torque wrenches";
}

void TestFolderEditor::windowsBearTheirWords()
{
    QFETCH(bool, isLocation);
    QFETCH(QString, mode);
    QFETCH(QString, box);
    whenModal<FolderEditor>([&](FolderEditor &form) {
        QTEST(form.objectName(), "window");
        QTEST(form.windowTitle(), "caption");
        QCOMPARE(form.ui.Frame1->title(), isLocation ? "Enter the Location Description" : "Enter the Type Description");
        QTEST(form.findChild<QLineEdit *>(box)->text(), "text");
        QCOMPARE(form.focusWidget(), form.ui.txtDescription);
        QCOMPARE(form.ui.cmdOKNew->isVisible(), mode == "New");
    });
    const bool saved =
        FolderEditor::Startup(isLocation ? FolderKind::location : FolderKind::type, mode, 2, "Tools\\Hall 3", 1);
    QVERIFY(!saved);
}

void TestFolderEditor::refuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    const QString number = "You may not use a number for a Location!";
    const QString empty = "Please enter a description.";
    const QString backslash = "You may not use a '\\' character for the description.";
    QTest::newRow("a number") << "123" << number;
    QTest::newRow("a number in scientific form") << "1e3" << number;
    QTest::newRow("nothing") << "" << empty;
    QTest::newRow("blanks") << "  " << empty;
    QTest::newRow("a backslash") << "Hall\\Cabinet" << backslash;
    QTest::newRow("a name that is taken, in other case") << "cabinet b"
                                                         << "Locations may not be duplicated.";
}

void TestFolderEditor::refuses()
{
    QFETCH(QString, text);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<FolderEditor>([&](FolderEditor &form) {
        form.ui.txtDescription->setText(text);
        form.ui.cmdCancel->setFocus();
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(form.isVisible());
        QCOMPARE(form.focusWidget(), form.ui.txtDescription);
        QCOMPARE(form.ui.txtDescription->text(), text);
    });

    QVERIFY(!FolderEditor::Startup(FolderKind::location, "New", 0, "Tools", 0));

    QVERIFY(user.done());
    QTEST(user.seen[0].text, "message");
    QCOMPARE(user.seen[0].caption, "System Message");
    QCOMPARE(user.seen[0].icon, QMessageBox::Information);
    QCOMPARE(crib->rows("Select Count(*) from Locations"), QStringList("2"));
    QCOMPARE(explorer->calls, QStringList());
}

void TestFolderEditor::newNameMustDifferFromAll_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("messages");

    QTest::newRow("another folder's, in another branch") << "Wrenches" << QStringList("Types may not be duplicated.");
    QTest::newRow("a location's") << "Cabinet A" << QStringList();
}

void TestFolderEditor::newNameMustDifferFromAll()
{
    QFETCH(QString, name);
    QFETCH(QStringList, messages);
    ScriptedUser user;
    user.answers(QMessageBox::Ok, int(messages.size()));
    whenModal<FolderEditor>([&](FolderEditor &form) {
        QTest::keyClicks(form.ui.txtDescription, name);
        QTest::keyClick(form.ui.txtDescription, Qt::Key_Return);
    });

    QCOMPARE(FolderEditor::Startup(FolderKind::type, "New", 0, "Torque wrenches", 2), messages.isEmpty());

    QCOMPARE(user.texts(), messages);
    QCOMPARE(crib->rows("Select Description,Parent from Types where ID>2"),
             messages.isEmpty() ? QStringList("Cabinet A|2") : QStringList());
}

// A rename is refused only where two others bear the name already; that is how the suite has it.
void TestFolderEditor::renameMayMeetOneOther()
{
    const auto rename = [](int id, const QString &name) {
        whenModal<FolderEditor>([name](FolderEditor &form) {
            form.ui.txtDescription->setText(name);
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        });
        return FolderEditor::Startup(FolderKind::location, "Edit", id, {}, 0);
    };
    crib->run({"INSERT INTO Locations (Description,Parent) VALUES('Cabinet C',0)"});
    QVERIFY(rename(1, "Cabinet A"));
    QVERIFY(rename(1, "Cabinet B"));
    QCOMPARE(crib->rows("Select Description from Locations order by ID"),
             QStringList({"Cabinet B", "Cabinet B", "Cabinet C"}));

    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    QVERIFY(!rename(3, "Cabinet B"));
    QCOMPARE(user.texts(), QStringList("Locations may not be duplicated."));
}

void TestFolderEditor::okAndNewGoesOnWithTheNextSibling()
{
    whenModal<FolderEditor>([](FolderEditor &form) {
        for (const char *name : {"Drawer 1", "Drawer 2"}) {
            QTest::keyClicks(form.ui.txtDescription, name);
            QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
            QCOMPARE(form.ui.txtDescription->text(), QString());
            QCOMPARE(form.focusWidget(), form.ui.txtDescription);
        }
        QTest::mouseClick(form.ui.cmdCancel, Qt::LeftButton);
    });

    QVERIFY(FolderEditor::Startup(FolderKind::location, "New", 0, "Cabinet B", 2));

    QCOMPARE(crib->rows("Select ID,Description,Parent from Locations where ID>2 order by ID"),
             QStringList({"3|Drawer 1|2", "4|Drawer 2|2"}));
    QCOMPARE(explorer->calls, QStringList({"add location 3 under 2: Drawer 1", "add location 4 under 2: Drawer 2"}));
}

void TestFolderEditor::renamesTheFolderItWasOpenedFor()
{
    whenModal<FolderEditor>([](FolderEditor &form) {
        QTest::keyClicks(form.ui.txtDescription, "Adjustable "); // over the old name, which stands selected
        QTest::keyClick(form.ui.txtDescription, Qt::Key_Return);
    });

    QVERIFY(FolderEditor::Startup(FolderKind::type, "Edit", 2, {}, 0));

    QCOMPARE(crib->rows("Select Description,Parent from Types order by ID"),
             QStringList({"Wrenches|0", "Adjustable |1"}));
    QCOMPARE(explorer->calls, QStringList("rename type 2: Adjustable "));
}

void TestFolderEditor::apostropheIsNotTypedButMayBePasted()
{
    whenModal<FolderEditor>([](FolderEditor &form) {
        QTest::keyClicks(form.ui.txtDescription, "T|o'm\\\"s ");
        QCOMPARE(form.ui.txtDescription->text(), "Toms ");
        QApplication::clipboard()->setText("Joe's shelf");
        QTest::keyClick(form.ui.txtDescription, Qt::Key_V, Qt::ControlModifier);
        QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
    });

    QVERIFY(FolderEditor::Startup(FolderKind::location, "New", 0, "Tools", 0));

    QCOMPARE(crib->rows("Select Description,Parent from Locations where ID=3"), QStringList("Toms Joe's shelf|0"));
    QCOMPARE(explorer->calls, QStringList("add location 3 under 0: Toms Joe's shelf"));
}

void TestFolderEditor::worksWithoutExplorer()
{
    explorer.reset();
    whenModal<FolderEditor>([](FolderEditor &form) {
        QTest::keyClicks(form.ui.txtDescription, "Cabinet C");
        QTest::keyClick(form.ui.txtDescription, Qt::Key_Return);
    });
    QVERIFY(FolderEditor::Startup(FolderKind::location, "New", 0, "Tools", 0));
    QCOMPARE(crib->rows("Select Description from Locations where ID=3"), QStringList("Cabinet C"));
}

void TestFolderEditor::engineErrorKeepsTheText()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<FolderEditor>([](FolderEditor &form) {
        QTest::keyClicks(form.ui.txtDescription, "Cabinet C");
        Session::close();
        QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
        QVERIFY(form.isVisible());
        QCOMPARE(form.ui.txtDescription->text(), "Cabinet C");
    });
    QVERIFY(!FolderEditor::Startup(FolderKind::location, "New", 0, "Tools", 0));
    QCOMPARE(user.seen.value(0).icon, QMessageBox::Critical);
    QCOMPARE(explorer->calls, QStringList());
}

QTEST_MAIN(TestFolderEditor)
#include "tst_foldereditor.moc"
