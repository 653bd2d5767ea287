#include "catalogue/FolderEditor.h"
#include "catalogue/FolderList.h"
#include "common/ProgramState.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"

class TestFolderList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void listsByNameAndTellsThatItIsOpen();
    void deletes_data();
    void deletes();
    void otherErrorsBearTheirNumber();
    void newFolderGoesUnderTheRoot();
    void edits_data();
    void edits();
    void emptyListDoesNothing();

private:
    std::optional<CribDatabase> crib;
    std::optional<FakeExplorer> explorer;
};

namespace {

QStringList listed(const FolderList &form)
{
    QStringList texts;
    for (int row = 0; row < form.ui.dblLocation->count(); ++row)
        texts.append(form.ui.dblLocation->item(row)->text());
    return texts;
}

}

void TestFolderList::init()
{
    crib.emplace();
    crib->run({
        "INSERT INTO Types (Description,Parent) VALUES('drills',0)",
        "INSERT INTO Locations (Description,Parent) VALUES('Attic',0)",
        "INSERT INTO Tools (Type,Location,Description) VALUES(1,2,'Open-end wrench')",
    });
    explorer.emplace();
}

void TestFolderList::cleanup()
{
    explorer.reset();
    crib.reset();
}

void TestFolderList::listsByNameAndTellsThatItIsOpen()
{
    whenModal<FolderList>([](FolderList &form) {
        QCOMPARE(form.objectName(), "frmLocation");
        QCOMPARE(form.windowTitle(), "Tool Locations");
        QCOMPARE(listed(form), QStringList({"Attic", "Cabinet A", "Cabinet B"}));
        QVERIFY(ProgramState::LocationListOpen && !ProgramState::TypeListOpen);
        QTest::mouseClick(form.ui.Command2, Qt::LeftButton);
        QVERIFY(!form.isVisible());
    });
    FolderList::showModal(FolderKind::location);
    QVERIFY(!ProgramState::LocationListOpen);

    whenModal<FolderList>([](FolderList &form) {
        QCOMPARE(form.objectName(), "frmType");
        QCOMPARE(form.windowTitle(), "Tool Types (Groups)");
        QCOMPARE(listed(form), QStringList({"drills", "Torque wrenches", "Wrenches"}));
        QVERIFY(!ProgramState::LocationListOpen && ProgramState::TypeListOpen);
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    FolderList::showModal(FolderKind::type);
    QVERIFY(!ProgramState::TypeListOpen);
}

void TestFolderList::deletes_data()
{
    QTest::addColumn<bool>("isLocation");
    QTest::addColumn<int>("row");
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<QStringList>("left");

    const QStringList locations = {"Attic", "Cabinet A", "Cabinet B"};
    const QStringList types = {"drills", "Torque wrenches", "Wrenches"};
    QTest::newRow("a location without tools")
        << true << 1 << QMessageBox::Ok << "" << QStringList({"Attic", "Cabinet B"});
    QTest::newRow("Cancel") << true << 1 << QMessageBox::Cancel << "" << locations;
    QTest::newRow("a location with tools")
        << true << 2 << QMessageBox::Ok << "There are tools in the selected Location, it cannot be deleted!"
        << locations;
    QTest::newRow("a type without tools") << false << 0 << QMessageBox::Ok << "" << types.mid(1);
    QTest::newRow("a type with tools") << false << 2 << QMessageBox::Ok
                                       << "There are tools in the selected Type (Group), it cannot be deleted!"
                                       << types;
}

void TestFolderList::deletes()
{
    QFETCH(bool, isLocation);
    QFETCH(int, row);
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(QString, refusal);
    QFETCH(QStringList, left);
    ScriptedUser user;
    user.answers(answer);
    if (!refusal.isEmpty())
        user.answers(QMessageBox::Ok);
    explorer->mode = isLocation ? "location" : "type";
    whenModal<FolderList>([&](FolderList &form) {
        form.ui.dblLocation->setCurrentRow(row);
        QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
        QCOMPARE(listed(form), left);
        QCOMPARE(form.ui.dblLocation->currentRow(), row);
    });

    FolderList::showModal(isLocation ? FolderKind::location : FolderKind::type);

    QVERIFY(user.done());
    QCOMPARE(user.seen[0].text, "Delete Selected Item?");
    QCOMPARE(user.seen[0].caption, "Deleting!");
    QCOMPARE(user.seen[0].buttons, QMessageBox::Ok | QMessageBox::Cancel);
    QCOMPARE(user.seen[0].defaultButton, QMessageBox::Cancel);
    if (!refusal.isEmpty()) {
        QCOMPARE(user.seen[1].text, refusal);
        QCOMPARE(user.seen[1].caption, "Error!");
        QCOMPARE(user.seen[1].icon, QMessageBox::Warning);
    }
    QCOMPARE(
        crib->rows(
            QStringLiteral("Select Description from %1 order by Description").arg(isLocation ? "Locations" : "Types")),
        left);
    QCOMPARE(explorer->calls, left.size() < 3 ? QStringList("rebuild view") : QStringList());
}

void TestFolderList::otherErrorsBearTheirNumber()
{
    ScriptedUser user;
    user.answers(QMessageBox::Ok, 2);
    whenModal<FolderList>([&](FolderList &form) {
        // Another program holds the file.
        const auto other = Workspace::first().openDatabase(crib->path());
        const Transaction writing(*other);
        other->execute("Update Types set Parent=0 where ID=1");
        QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
        QCOMPARE(form.ui.dblLocation->count(), 3);
    });

    FolderList::showModal(FolderKind::type);

    QVERIFY(user.done());
    const QString beginning = "An unknown error ocurred when trying to save the new Type!:  3260  ";
    QCOMPARE(user.seen[1].text.left(beginning.size()), beginning);
    QVERIFY(user.seen[1].text.size() > beginning.size());
    QCOMPARE(user.seen[1].caption, "Error!");
    QCOMPARE(crib->rows("Select Count(*) from Types"), QStringList("3"));
}

void TestFolderList::newFolderGoesUnderTheRoot()
{
    whenModal<FolderList>([](FolderList &form) {
        whenModal<FolderEditor>([](FolderEditor &editor) {
            QCOMPARE(editor.windowTitle(), "New Tool Location in Tools");
            QTest::keyClicks(editor.ui.txtDescription, "Basement");
            QTest::keyClick(editor.ui.txtDescription, Qt::Key_Return);
        });
        QTest::mouseClick(form.ui.cmdNew, Qt::LeftButton);
        QCOMPARE(listed(form), QStringList({"Attic", "Basement", "Cabinet A", "Cabinet B"}));
    });
    FolderList::showModal(FolderKind::location);
    QCOMPARE(crib->rows("Select Parent from Locations where Description='Basement'"), QStringList("0"));
    QCOMPARE(explorer->calls, QStringList("add location 4 under 0: Basement"));
}

void TestFolderList::edits_data()
{
    QTest::addColumn<bool>("byDoubleClick");
    QTest::newRow("by the button") << false;
    QTest::newRow("by a double click") << true;
}

void TestFolderList::edits()
{
    QFETCH(bool, byDoubleClick);
    whenModal<FolderList>([&](FolderList &form) {
        whenModal<FolderEditor>([](FolderEditor &editor) {
            QCOMPARE(editor.ui.txtDescription->text(), "Torque wrenches");
            editor.ui.txtDescription->setText("Bits");
            QTest::keyClick(editor.ui.txtDescription, Qt::Key_Return);
        });
        QListWidget *list = form.ui.dblLocation;
        list->setCurrentRow(1);
        if (byDoubleClick) {
            const QPoint place = list->visualItemRect(list->item(1)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
        } else {
            QTest::mouseClick(form.ui.cmdEdit, Qt::LeftButton);
        }
        QCOMPARE(listed(form), QStringList({"Bits", "drills", "Wrenches"}));
    });
    FolderList::showModal(FolderKind::type);
    QCOMPARE(crib->rows("Select Description,Parent from Types where ID=2"), QStringList("Bits|1"));
    QCOMPARE(explorer->calls, QStringList("rename type 2: Bits"));
}

void TestFolderList::emptyListDoesNothing()
{
    crib->run({"DELETE FROM Tools", "DELETE FROM Types"});
    const ScriptedUser user;
    whenModal<FolderList>([](FolderList &form) {
        QTest::mouseClick(form.ui.cmdEdit, Qt::LeftButton);
        QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
    });
    FolderList::showModal(FolderKind::type);
}

QTEST_MAIN(TestFolderList)
#include "tst_folderlist.moc"
