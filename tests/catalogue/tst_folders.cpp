#include "catalogue/FolderEditor.h"
#include "catalogue/SpareFolderList.h"
#include "tests/support/CribWithTool.h"

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

    void newFolders_data()
    {
        row("locations", &FolderKind::location, " cabinet\n b ", "You may not use a number for a Location!",
            "Locations may not be duplicated.");
        row("types", &FolderKind::type, "DRILLS", "You may not use a number for a Type!",
            "Types may not be duplicated.");
    }

    void newFolders()
    {
        const auto [kind, taken, number, duplicate] = fetched<const FolderKind *, QString, QString, QString>();
        ScriptedUser user(QMessageBox::Ok, 4);
        whenModal<FolderEditor>([&](FolderEditor &form) {
            for (const QString &refused : QStringList{"1e3", "  ", "Hall\\Cabinet", taken}) {
                form.ui.txtDescription->setText(refused);
                form.ui.cmdCancel->setFocus();
                QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
                QVERIFY(form.isVisible() && form.ui.txtDescription->hasFocus());
            }
            for (const char *name : {"Shelf", "Tom's"}) {
                form.ui.txtDescription->setText(name); // as it may be pasted
                QTest::mouseClick(form.ui.cmdOKNew, Qt::LeftButton);
                QCOMPARE(form.ui.txtDescription->text(), QString());
            }
        });
        QVERIFY(FolderEditor::Startup(*kind, "New", 0, "Tools", 2));
        QCOMPARE(user.boxes(),
                 QStringList({remark(number), remark("Please enter a description."),
                              remark("You may not use a '\\' character for the description."), remark(duplicate)}));
        QCOMPARE(crib->rows(QString("Select ID,Description,Parent from %1s where ID>3 order by ID").arg(kind->mode)),
                 QStringList({"4|Shelf|2", "5|Tom's|2"}));
        const QString add = QString("add %1 %2 under 2: %3").arg(kind->mode);
        QCOMPARE(crib->explorer.calls, QStringList({add.arg("4", "Shelf"), add.arg("5", "Tom's")}));
    }

    // A rename is refused only where two others bear the name already; that is how the suite has it.
    void renameMayMeetOneOther()
    {
        ScriptedUser user(QMessageBox::Ok);
        for (const auto &[id, name, taken] :
             {std::tuple(1, "Cabinet A", true), {1, "Cabinet B", true}, {3, "Cabinet B", false}}) {
            whenModal<FolderEditor>([name = name](FolderEditor &form) {
                form.ui.txtDescription->setText(name);
                QTest::mouseClick(form.ui.cmdOK, Qt::LeftButton);
            });
            QCOMPARE(FolderEditor::Startup(FolderKind::location, "Edit", id, {}, 0), taken);
        }
    }

    void othersWereFaster_data()
    {
        row("a new one below a folder that is gone", "New", "Delete from Locations where ID=2",
            "The Location was deleted meanwhile.");
        row("a rename of a folder that is gone", "Edit", "Delete from Locations where ID=2",
            "The Location was deleted meanwhile.");
        row("the numbers have ended", "New", "INSERT INTO Locations (ID,Description,Parent) VALUES(32767,'Last',0)",
            "No more Locations can be added: their numbers end at 32767.");
    }

    void othersWereFaster()
    {
        const auto [mode, meanwhile, message] = fetched<QString, QString, QString>();
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
        QCOMPARE(user.texts().value(0), message);
        QCOMPARE(crib->rows("Select * from Locations"), before);
        QCOMPARE(crib->explorer.calls, QStringList("rebuild view"));
    }

    void deletes_data()
    {
        row("locations", &FolderKind::location, "There are tools in the selected Location, it cannot be deleted!");
        row("types", &FolderKind::type, "There are tools in the selected Type (Group), it cannot be deleted!");
    }

    void deletes()
    {
        const auto [kind, refusal] = fetched<const FolderKind *, QString>();
        const QString question = "Deleting! (question): Delete Selected Item? [OK] [Cancel]*";
        crib->run({"UPDATE Types SET Parent=0"});
        ScriptedUser user(QMessageBox::Cancel);
        user.answers(QMessageBox::Ok, 4);
        whenModal<SpareFolderList>([&](SpareFolderList &form) {
            const auto remove = [&](int row) {
                form.ui.dblLocation->setCurrentRow(row);
                QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
                return textsOf(form.ui.dblLocation->model()).size();
            };
            QCOMPARE(remove(2), 3); // no
            QCOMPARE(remove(1), 3); // with a tool
            crib->explorer.mode = "scrap";
            QCOMPARE(remove(2), 2); // while another tree is shown
            QCOMPARE(form.ui.dblLocation->currentRow(), 1);
            QCOMPARE(crib->explorer.calls, QStringList());
            crib->explorer.mode = kind->mode;
            QCOMPARE(remove(0), 1);
        });
        SpareFolderList::showModal(*kind);
        QCOMPARE(user.boxes(),
                 QStringList({question, question, "Error! (warning): " + refusal + " [OK]", question, question}));
        QCOMPARE(crib->rows(QString("Select Count(*) from %1s").arg(kind->mode)), QStringList("1"));
        QCOMPARE(crib->explorer.calls, QStringList("rebuild view"));
    }

    void otherErrorsBearTheirNumber()
    {
        ScriptedUser user(QMessageBox::Ok, 2);
        refuse(Session::database(), "DELETE", "Types");
        whenModal<SpareFolderList>([&](SpareFolderList &form) {
            QTest::mouseClick(form.ui.cmdDelete, Qt::LeftButton);
            QCOMPARE(form.ui.dblLocation->count(), 3);
        });
        SpareFolderList::showModal(FolderKind::type);
        const QString start =
            "Error! (warning): An unknown error ocurred when trying to save the new Type!:  3000  Reserved";
        QCOMPARE(user.boxes()[1].left(start.size()), start);
    }

    void listIsWorkedThrough()
    {
        const auto edit = [](const QString &title, const QString &name) {
            whenModal<FolderEditor>([=](FolderEditor &editor) {
                QCOMPARE(editor.windowTitle(), title);
                QCOMPARE(editor.ui.cmdOKNew->isVisible(), title.startsWith("New"));
                QTest::keyClicks(editor.ui.txtDescription, name); // over the old name, which stands selected
                QTest::keyClick(editor.ui.txtDescription, Qt::Key_Return);
            });
        };
        whenModal<SpareFolderList>([&](SpareFolderList &form) {
            QListWidget *list = form.ui.dblLocation;
            QVERIFY(!SpareFolderList::LocationListOpen && SpareFolderList::TypeListOpen);
            QCOMPARE(textsOf(list->model()), QStringList({"drills", "Torque wrenches", "Wrenches"}));
            list->setCurrentRow(1);
            edit("Edit Tool Type", "Bits '"); // without the apostrophe
            const QPoint place = list->visualItemRect(list->item(1)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
            edit("New Tool Type in Tools", "Chisels");
            QTest::mouseClick(form.ui.cmdNew, Qt::LeftButton);
            QCOMPARE(textsOf(list->model()), QStringList({"Bits", "Chisels", "drills", "Wrenches"}));
        });
        SpareFolderList::showModal(FolderKind::type);
        QVERIFY(!SpareFolderList::TypeListOpen);
        QCOMPARE(crib->rows("Select Description,Parent from Types order by ID"),
                 QStringList({"Wrenches|0", "Bits|1", "drills|0", "Chisels|0"}));
        QCOMPARE(crib->explorer.calls, QStringList({"rename type 2: Bits", "add type 4 under 0: Chisels"}));
    }

private:
    std::optional<CribWithTool> crib;
};

QTEST_MAIN(TestFolders)
#include "tst_folders.moc"
