#include "catalogue/FolderEditor.h"
#include "catalogue/FolderList.h"
#include "tests/support/CribWithTool.h"
#include "tests/support/DataRows.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>

/// The lists of types and locations, and the editor of both.
class TestFolders : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        crib->insert("Types (Description,Parent)", {"'drills',0"});
        crib->insert("Locations (Description,Parent)", {"'Attic',0"});
    }

    void cleanup() { crib.reset(); }

    void editorRefuses_data()
    {
        columns<bool, QString, QString>("isLocation", "text", "message");
        row("a number", true, "123", "You may not use a number for a Location!");
        row("a number in scientific form", false, "1e3", "You may not use a number for a Type!");
        row("nothing", true, "", "Please enter a description.");
        row("blanks", true, "  ", "Please enter a description.");
        row("a backslash", true, "Hall\\Cabinet", "You may not use a '\\' character for the description.");
        row("a name that is taken, in other case and with other blanks", true, " cabinet\n b ",
            "Locations may not be duplicated.");
        row("another type's in another branch", false, "drills", "Types may not be duplicated.");
    }

    void editorRefuses()
    {
        QFETCH(bool, isLocation);
        QFETCH(QString, text);
        QFETCH(QString, message);
        ScriptedUser user(QMessageBox::Ok);
        whenModal<FolderEditor>([&](FolderEditor &form) {
            QCOMPARE(form.focusWidget(), form.ui.txtDescription);
            form.ui.txtDescription->setText(text);
            form.ui.cmdCancel->setFocus();
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            QVERIFY(form.isVisible());
            QCOMPARE(form.focusWidget(), form.ui.txtDescription);
            QCOMPARE(form.ui.txtDescription->text(), text.simplified());
        });
        QVERIFY(!FolderEditor::Startup(kind(isLocation), "New", 0, "Tools", 1));
        QCOMPARE(user.boxes(), QStringList(remark(message)));
        QCOMPARE(crib->rows("Select Count(*) from Locations") + crib->rows("Select Count(*) from Types"),
                 QStringList({"3", "3"}));
        QCOMPARE(crib->explorer.calls, QStringList());
    }

    // A rename is refused only where two others bear the name already; that is how the suite has it.
    void renameMayMeetOneOther()
    {
        const auto rename = [](int id, const QString &name) {
            whenModal<FolderEditor>([name](FolderEditor &form) {
                form.ui.txtDescription->setText(name);
                QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            });
            return FolderEditor::Startup(FolderKind::location, "Edit", id, {}, 0);
        };
        QVERIFY(rename(1, "Cabinet A"));
        QVERIFY(rename(1, "Cabinet B"));
        ScriptedUser user(QMessageBox::Ok);
        QVERIFY(!rename(3, "Cabinet B"));
        QCOMPARE(user.texts(), QStringList("Locations may not be duplicated."));
        QCOMPARE(crib->rows("Select Description from Locations order by ID"),
                 QStringList({"Cabinet B", "Cabinet B", "Attic"}));
    }

    void okAndNewGoesOnWithTheNextSibling()
    {
        whenModal<FolderEditor>([](FolderEditor &form) {
            for (const char *name : {"Wrenches", "Drawer 2"}) { // a type may be called so, too
                QTest::keyClicks(form.ui.txtDescription, name);
                QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
                QCOMPARE(form.ui.txtDescription->text(), QString());
                QCOMPARE(form.focusWidget(), form.ui.txtDescription);
            }
            QTest::mouseClick(form.ui.cmdCancel, Qt::LeftButton);
        });
        QVERIFY(FolderEditor::Startup(FolderKind::location, "New", 0, "Cabinet B", 2));
        QCOMPARE(crib->rows("Select ID,Description,Parent from Locations where ID>3 order by ID"),
                 QStringList({"4|Wrenches|2", "5|Drawer 2|2"}));
        QCOMPARE(crib->explorer.calls,
                 QStringList({"add location 4 under 2: Wrenches", "add location 5 under 2: Drawer 2"}));
    }

    void apostropheIsNotTypedButMayBePasted()
    {
        whenModal<FolderEditor>([](FolderEditor &form) {
            QTest::keyClicks(form.ui.txtDescription, "T|o'm\\\"s ");
            QCOMPARE(form.ui.txtDescription->text(), "Toms ");
            QApplication::clipboard()->setText("Joe's shelf");
            QTest::keyClick(form.ui.txtDescription, Qt::Key_V, Qt::ControlModifier);
            QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
        });
        setTheExplorer(nullptr); // it need not be open
        QVERIFY(FolderEditor::Startup(FolderKind::location, "New", 0, "Tools", 0));
        QCOMPARE(crib->rows("Select Description,Parent from Locations where ID=4"), QStringList("Toms Joe's shelf|0"));
    }

    void othersWereFaster_data()
    {
        columns<QString, QString, QString>("mode", "meanwhile", "message");
        row("a new one below a folder that is gone", "New", "Delete from Locations where ID=2",
            "The Location was deleted meanwhile.");
        row("a rename of a folder that is gone", "Edit", "Delete from Locations where ID=2",
            "The Location was deleted meanwhile.");
        row("the numbers have ended", "New", "INSERT INTO Locations (ID,Description,Parent) VALUES(32767,'Last',0)",
            "No more Locations can be added: their numbers end at 32767.");
    }

    void othersWereFaster()
    {
        QFETCH(QString, mode);
        QFETCH(QString, meanwhile);
        crib->explorer.mode = "location";
        ScriptedUser user(QMessageBox::Ok);
        QStringList before;
        whenModal<FolderEditor>([&](FolderEditor &form) {
            form.ui.txtDescription->setText("Drawer 1");
            crib->run({meanwhile});
            before = crib->rows("Select * from Locations");
            form.ui.cmdOK->click();
        });
        QVERIFY(!FolderEditor::Startup(FolderKind::location, mode, 2, "Cabinet B", 2));
        QTEST(user.texts().value(0), "message");
        QCOMPARE(crib->rows("Select * from Locations"), before);
        QCOMPARE(crib->explorer.calls, QStringList("rebuild view"));
    }

    void engineErrorKeepsTheText()
    {
        ScriptedUser user(QMessageBox::Ok);
        whenModal<FolderEditor>([](FolderEditor &form) {
            QTest::keyClicks(form.ui.txtDescription, "Cabinet C");
            Session::close();
            QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            QVERIFY(form.isVisible());
            QCOMPARE(form.ui.txtDescription->text(), "Cabinet C");
        });
        QVERIFY(!FolderEditor::Startup(FolderKind::location, "New", 0, "Tools", 0));
        QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
        QCOMPARE(crib->explorer.calls, QStringList());
    }

    void listsByNameAndTellsThatItIsOpen()
    {
        whenModal<FolderList>([](FolderList &form) {
            QCOMPARE(form.objectName(), "frmLocation");
            QCOMPARE(form.windowTitle(), "Tool Locations");
            QCOMPARE(textsOf(form.ui.dblLocation->model()), QStringList({"Attic", "Cabinet A", "Cabinet B"}));
            QVERIFY(FolderList::LocationListOpen && !FolderList::TypeListOpen);
            QTest::mouseClick(form.ui.Command2, Qt::LeftButton);
            QVERIFY(!form.isVisible());
        });
        FolderList::showModal(FolderKind::location);
        QVERIFY(!FolderList::LocationListOpen);

        whenModal<FolderList>([](FolderList &form) {
            QCOMPARE(form.objectName(), "frmType");
            QCOMPARE(form.windowTitle(), "Tool Types (Groups)");
            QCOMPARE(textsOf(form.ui.dblLocation->model()), QStringList({"drills", "Torque wrenches", "Wrenches"}));
            QVERIFY(!FolderList::LocationListOpen && FolderList::TypeListOpen);
            QTest::keyClick(&form, Qt::Key_Escape);
        });
        FolderList::showModal(FolderKind::type);
        QVERIFY(!FolderList::TypeListOpen);
    }

    void deletes_data()
    {
        columns<bool, int, QMessageBox::StandardButton, QString>("isLocation", "place", "answer", "refusal");
        row("a location without tools", true, 2, QMessageBox::Ok, "");
        row("Cancel", true, 2, QMessageBox::Cancel, "");
        row("a location with tools", true, 1, QMessageBox::Ok,
            "There are tools in the selected Location, it cannot be deleted!");
        row("a type without tools", false, 0, QMessageBox::Ok, "");
        row("a type with tools", false, 1, QMessageBox::Ok,
            "There are tools in the selected Type (Group), it cannot be deleted!");
    }

    void deletes()
    {
        QFETCH(bool, isLocation);
        QFETCH(int, place);
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(QString, refusal);
        QStringList boxes("Deleting! (question): Delete Selected Item? [OK] [Cancel]*");
        ScriptedUser user(answer);
        if (!refusal.isEmpty()) {
            user.answers(QMessageBox::Ok);
            boxes.append("Error! (warning): " + refusal + " [OK]");
        }
        QStringList left = isLocation ? QStringList{"Attic", "Cabinet A", "Cabinet B"}
                                      : QStringList{"drills", "Torque wrenches", "Wrenches"};
        const bool deleted = answer == QMessageBox::Ok && refusal.isEmpty();
        if (deleted)
            left.removeAt(place);
        crib->explorer.mode = isLocation ? "location" : "type";
        whenModal<FolderList>([&](FolderList &form) {
            form.ui.dblLocation->setCurrentRow(place);
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
            QCOMPARE(textsOf(form.ui.dblLocation->model()), left);
            QCOMPARE(form.ui.dblLocation->currentRow(), qMin(place, int(left.size()) - 1));
        });
        FolderList::showModal(kind(isLocation));
        QCOMPARE(user.boxes(), boxes);
        QCOMPARE(crib->rows(isLocation ? "Select Description from Locations order by Description"
                                       : "Select Description from Types order by Description"),
                 left);
        QCOMPARE(crib->explorer.calls, deleted ? QStringList("rebuild view") : QStringList());
    }

    void otherErrorsBearTheirNumber()
    {
        ScriptedUser user(QMessageBox::Ok, 2);
        whenModal<FolderList>([&](FolderList &form) {
            // Another program holds the file.
            const auto other = Workspace::first().openDatabase(crib->path());
            const Transaction writing(*other);
            other->execute("Update Types set Parent=0 where ID=1");
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
            QCOMPARE(form.ui.dblLocation->count(), 3);
        });
        FolderList::showModal(FolderKind::type);
        const QString start =
            "Error! (warning): An unknown error ocurred when trying to save the new Type!:  3260  Could not";
        QCOMPARE(user.boxes()[1].left(start.size()), start);
        QCOMPARE(crib->rows("Select Count(*) from Types"), QStringList("3"));
    }

    void newFolderGoesUnderTheRoot()
    {
        whenModal<FolderList>([](FolderList &form) {
            whenModal<FolderEditor>([](FolderEditor &editor) {
                QCOMPARE(editor.objectName(), "frmLocationNewEdit");
                QCOMPARE(editor.windowTitle(), "New Tool Location in Tools");
                QCOMPARE(editor.ui.Frame1->title(), "Enter the Location Description");
                QVERIFY(editor.ui.cmdOKNew->isVisible());
                QTest::keyClicks(editor.ui.txtDescription, "Basement");
                QTest::keyClick(editor.ui.txtDescription, Qt::Key_Return);
            });
            QTest::mouseClick(form.ui.cmdNew, Qt::LeftButton);
            QCOMPARE(textsOf(form.ui.dblLocation->model()),
                     QStringList({"Attic", "Basement", "Cabinet A", "Cabinet B"}));
        });
        FolderList::showModal(FolderKind::location);
        QCOMPARE(crib->rows("Select Parent from Locations where Description='Basement'"), QStringList("0"));
        QCOMPARE(crib->explorer.calls, QStringList("add location 4 under 0: Basement"));
    }

    void renames_data()
    {
        columns<bool>("byDoubleClick");
        row("by the button", false);
        row("by a double click", true);
    }

    void renames()
    {
        QFETCH(bool, byDoubleClick);
        whenModal<FolderList>([&](FolderList &form) {
            whenModal<FolderEditor>([](FolderEditor &editor) {
                QCOMPARE(editor.objectName(), "frmTypeNewEdit");
                QCOMPARE(editor.windowTitle(), "Edit Tool Type");
                QCOMPARE(editor.ui.Frame1->title(), "Enter the Type Description");
                QCOMPARE(editor.findChild<QLineEdit *>("txtType")->text(), "Torque wrenches");
                QVERIFY(!editor.ui.cmdOKNew->isVisible());
                QTest::keyClicks(editor.ui.txtDescription, "Bits "); // over the old name, which stands selected
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
            QCOMPARE(textsOf(form.ui.dblLocation->model()), QStringList({"Bits", "drills", "Wrenches"}));
        });
        FolderList::showModal(FolderKind::type);
        QCOMPARE(crib->rows("Select Description,Parent from Types order by ID"),
                 QStringList({"Wrenches|0", "Bits|1", "drills|0"}));
        QCOMPARE(crib->explorer.calls, QStringList("rename type 2: Bits"));
    }

    void emptyListDoesNothing()
    {
        crib->run({"DELETE FROM Tools", "DELETE FROM Types"});
        const ScriptedUser user;
        whenModal<FolderList>([](FolderList &form) {
            QTest::mouseClick(form.ui.cmdEdit, Qt::LeftButton);
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
        });
        FolderList::showModal(FolderKind::type);
    }

private:
    static const FolderKind &kind(bool isLocation) { return isLocation ? FolderKind::location : FolderKind::type; }

    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestFolders)
#include "tst_folders.moc"
