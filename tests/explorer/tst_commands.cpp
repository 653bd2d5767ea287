#include "catalogue/FolderEditor.h"
#include "catalogue/frmToolNewEdit.h"
#include "platform/gui/ChangeBar.h"
#include "tests/support/CribExplorer.h"
#include "tests/support/EngineFile.h"

#include <QScopedValueRollback>

/// The explorer's commands: what each says, opens and deletes.
class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.emplace();
        m_crib->insert("Types (Description,Parent)", {"'Drills',0", "'Empty',2"});
        m_crib->insert("Tools (Type,Location,Description,PricePer,Out)",
                       {"2,1,'Torque wrench',12.5,0", "2,1,'Torque wrench long',12.5,0",
                        "2,2,'Torque wrench out',12.5,-1", "3,1,'Drill 5',12.5,0"});
        m_crib->insert(
            "CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active)",
            {"3,'17',1250,4,#2026-03-04#,-1", "1,'17',1250,4,#2026-03-04#,0", "70,'17',1250,4,#2026-03-04#,0"});
        m_crib->insert(
            "Scrap (ToolID,Type,TypeDescription,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId,Location)",
            {"70,3,'Drills','Drill 6',21,#2025-12-31#,1250,4,1", "71,3,'Drills','Drill 7',21,#2025-12-31#,1250,4,1"});
        explorer().Startup(false);
    }

    void refusals_data()
    {
        const auto row = [](const QString &button, int option, const char *node, const char *item,
                            const char *message) {
            ::row(qPrintable(button + ' ' + node + ' ' + item), button, option, node, item, message);
        };
        row("cmdScrapTool", 0, "l2", "", "Please select a tool to scrap.");
        row("cmdScrapTool", 0, "l2", "t4", "Please select a tool to scrap.");
        row("cmdScrapTool", 3, "C1250", "j16384", "The selected tool has already been scrapped.");
        row("cmdEdit", 3, "C1250", "j16384", "A scrapped tool cannot be edited!");
        row("cmdEdit", 3, "l4", "", "This node cannot be edited.");
        row("cmdEdit", 2, "l1", "co3", "A checked out tool cannot be edited!");
        row("cmdEdit", 0, "l2", "co3", "A checked out tool cannot be edited!");
        row("cmdEdit", 0, "x0", "", "You cannot edit this Node");
        row("cmdDelete", 0, "x0", "", "You cannot delete the Tools node.");
        row("cmdDelete", 0, "l1", "", "You cannot delete types which contain sub folders.");
        row("cmdDelete", 0, "l3", "", "You cannot delete types which contain tools.");
        row("cmdDelete", 1, "l1", "", "You cannot delete locations which contain tools.");
        row("cmdDelete", 0, "x0", "t1", "Cannot delete folders that contain sub folders");
        row("cmdDelete", 0, "x0", "t3", "You cannot delete types which contain tools.");
        row("cmdDelete", 0, "l2", "co3", "You must Check In the tool before deleting.");
        row("cmdDelete", 2, "l1", "co3", "You must check tools in before deleting.");
        row("cmdDelete", 2, "l1", "", "You must check tools in before deleting.");
        row("cmdDelete", 3, "l4", "", "Scrapped tools must be deleted individually.");
        row("cmdDelete", 3, "x0", "s4", "Scrapped tools must be deleted individually.");
        row("cmdNew", 2, "x0", "",
            "To add a tool use the New button while in the View by Type or View by Location mode. ");
        row("cmdNew", 3, "x0", "",
            "To add a tool use the New button while in the View by Type or View by Location mode. ");
        row("cmdNew", 0, "l2", "", "mnuTreeNew without mnuTreeNewLocation");
        row("cmdNew", 1, "l2", "", "mnuTreeNew without mnuTreeNewType");
    }

    void refusals()
    {
        const auto [button, option, node, item, message] = fetched<QString, int, QString, QString, QString>();
        m_crib->goTo(option, node, item);
        const bool isPopUp = message.startsWith("mnu");
        ScriptedUser user(QMessageBox::Ok, !isPopUp);
        QTest::mouseClick(explorer().findChild<QPushButton *>(button), Qt::LeftButton);
        QCOMPARE(user.texts() + m_crib->frame.popUps, QStringList(message));
        QVERIFY(isPopUp || user.seen[0].caption == "System Message");
        QCOMPARE(m_crib->rows("Select Count(*) from Types"), QStringList("4"));
    }

    void newToolLandsWhereItShould_data()
    {
        row("the tree's type", 0, "l2", "", "Tools\\Wrenches\\Torque wrenches|2||");
        row("the tree's location", 1, "l1", "", "||Tools\\Cabinet A|1");
        row("a tool's type", 0, "l2", "r1", "Torque wrenches|2||");
        row("a folder's parent", 0, "l2", "t4", "Torque wrenches|2||");
        row("no folder above", 0, "x0", "t3", "Please select a tool type first.");
        row("the root", 1, "x0", "", "Please select a tool location first.");
    }

    void newToolLandsWhereItShould()
    {
        const auto [option, node, item, shown] = fetched<int, QString, QString, QString>();
        m_crib->goTo(option, node, item);
        const bool refused = shown.startsWith("Please");
        ScriptedUser user(QMessageBox::Ok, refused);
        QStringList seen;
        if (!refused)
            whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
                for (const QLineEdit *box :
                     {form.ui.txtType, form.ui.txtTypeId, form.ui.txtLocation, form.ui.txtLocationId})
                    seen.append(box->text());
            });
        emit m_crib->frame.TreeNewTool();
        QCOMPARE(user.texts().join("") + seen.join('|'), shown);
    }

    void newAndRenamedFoldersShowAtOnce()
    {
        m_crib->goTo(0, "l1");
        const auto type = [](const QString &text) {
            whenModal<FolderEditor>([text](FolderEditor &form) {
                form.ui.txtDescription->setText(text);
                form.ui.cmdOK->click();
            });
        };
        type("Hook wrenches");
        emit m_crib->frame.TreeNewType();
        explorer().addChildNode("location", 1, 9, "Shelf"); // from a list of locations, while types are shown
        QVERIFY(!m_crib->node("l9"));
        QCOMPARE(m_crib->keys(), QStringList({"t5", "t2"}));
        type("Spanners");
        explorer().cmdEdit_Click();
        QCOMPARE(explorer().ui.lblList->text(), "Contents of 'Tools\\Spanners'");
        m_crib->goTo(0, "l1", "t5"); // a folder in the list, not the selected node
        type("Hooks");
        explorer().cmdEdit_Click();
        QCOMPARE(KeyedTree::fullPath(m_crib->node("l5")), "Tools\\Spanners\\Hooks");
        QCOMPARE(m_crib->list()->items().item(0).text, "Hooks");
    }

    void deletions_data()
    {
        const QString one =
            "You are about to delete the selected tool.\nAll checked in and checked out history will also be "
            "removed.\nThis can not be undone.\n Are you sure you want to continue?";
        const QString several =
            "You are about to delete selected tool(s) on the list.\nAll checked in and checked out history "
            "will also be removed.\nThis can not be undone. Are you sure?";
        const QString folder = "You are about to delete a tool type. This can not be undone. Are you sure?";
        row("one tool with its loans", "l2", "r1", one, true, "3|4|2");
        row("No keeps it", "l2", "r1", one, false, "4|4|3");
        row("tools and an empty folder", "l2", "r1 r2 t4", several, true, "2|3|2");
        row("a folder of the list", "l2", "t4", folder, true, "4|3|3");
        row("a folder of the tree", "l4", "", folder, true, "4|3|3");
    }

    void deletions()
    {
        const auto [node, items, question, agrees, left] = fetched<QString, QString, QString, bool, QString>();
        m_crib->goTo(0, node, items);
        ScriptedUser user(agrees ? QMessageBox::Yes : QMessageBox::No);
        explorer().ui.cmdDelete->click();
        QCOMPARE(user.boxes(), QStringList("System Message (question): " + question + " [Yes] [No]*"));
        QStringList counts;
        for (const char *table : {"Tools", "Types", "CheckOutIn"})
            counts += m_crib->rows(QString("Select Count(*) from %1").arg(table));
        QCOMPARE(counts.join('|'), left);
        const bool folderGone = agrees && (items.contains("t4") || node == "l4");
        QCOMPARE(m_crib->node("l4") == nullptr, folderGone);
    }

    void stopTakesEverythingBack_data()
    {
        row("tools, by the button", 0, "l2", "r1 r2", Stop([](ChangeBar *bar) { bar->ui.cmdStop->click(); }));
        row("one tool, by closing the bar", 0, "l2", "r1", Stop([](ChangeBar *bar) { bar->close(); }));
        row("scrapped tools, by a key", 3, "C1250", "j16384 j16385",
            Stop([](ChangeBar *bar) { QTest::keyClick(bar, Qt::Key_Escape); }));
    }

    void stopTakesEverythingBack()
    {
        const auto [view, node, items, stop] = fetched<int, QString, QString, Stop>();
        m_crib->goTo(view, node, items);
        const auto everything = [this] {
            QStringList rows;
            for (const char *table : {"Tools", "Types", "CheckOutIn", "Scrap"})
                rows += m_crib->rows(QString("Select * from %1").arg(table));
            return rows;
        };
        const QStringList before = everything();
        const QScopedValueRollback atOnce(ChangeBar::millisecondsUntilShown, 0);
        bool wasRefused = false;
        ScriptedUser user(QMessageBox::Yes);
        user.answers(QMessageBox::Ok).meanwhile([&] {
            // A timer of another window wants to read; then the user has had enough.
            QTimer::singleShot(0, this, [&, stop = stop] {
                wasRefused = errorOf([this] { m_crib->rows("Select ID from Tools"); }) == EngineError::lockedFile;
                stop(qobject_cast<ChangeBar *>(QApplication::activeModalWidget()));
            });
        });
        explorer().ui.cmdDelete->click();
        QCOMPARE(user.boxes().last(), remark("Stopped. Nothing was deleted."));
        QVERIFY(wasRefused);
        QCOMPARE(everything(), before);
        QCOMPARE(explorer().ui.lstToolList->selectedRows().size(), size_t(items.count(' ') + 1));
    }

    void whatOthersDoMeanwhileHolds_data()
    {
        row("lent before it is deleted", "r1", "", "UPDATE Tools SET Out=-1 WHERE ID=1",
            "You must Check In the tool before deleting.");
        row("a tool put in a folder that is deleted", "t4", "", "UPDATE Tools SET Type=4 WHERE ID=2",
            "You cannot delete types which contain tools.");
        row("a folder put there", "t4", "", "UPDATE Types SET Parent=4 WHERE ID=3",
            "Cannot delete folders that contain sub folders");
        row("lent before it is moved", "r1", "l3", "UPDATE Tools SET Out=-1 WHERE ID=1",
            "You must Check In the tool before moving.");
        row("one of two has gone", "r1 r2", "l3", "DELETE FROM Tools WHERE ID=2",
            "Not all of the items are still there.");
        row("the target has gone", "t4", "l1", "UPDATE Types SET Parent=99 WHERE ID=1",
            "'Wrenches' is no longer there.");
        row("the target lies below by now", "t4", "l3", "UPDATE Types SET Parent=4 WHERE ID=3",
            "A node can't be made a child of its own children.");
    }

    void whatOthersDoMeanwhileHolds()
    {
        const auto [items, target, others, message] = fetched<QString, QString, QString, QString>();
        m_crib->goTo(0, "l2", items);
        const auto everything = [this] {
            return m_crib->rows("Select ID,Type,Out from Tools") + m_crib->rows("Select ID,Parent from Types");
        };
        QStringList left;
        ScriptedUser user(QMessageBox::Yes);
        user.answers(QMessageBox::Ok).meanwhile([&] {
            m_crib->damage({others});
            left = everything();
        });
        if (target.isEmpty()) {
            explorer().ui.cmdDelete->click();
        } else {
            m_crib->list()->DragArmed = true;
            m_crib->tree()->setDropHighlight(m_crib->node(target));
            emit m_crib->tree()->itemsDropped();
        }
        QCOMPARE(user.texts().last(), "Somebody else has changed the crib meanwhile: " + message);
        QCOMPARE(everything(), left);
        QVERIFY(m_crib->node("l2") || target == "l1");
        QCOMPARE(explorer().ui.lblList->text(),
                 "Contents of '" + KeyedTree::fullPath(m_crib->tree()->selectedNode()) + "'");
    }

    // Mark, heading, list and what commands act on are one.
    void gesturesThatLeadNowhereKeepThePlace()
    {
        m_crib->goTo(0, "l1");
        TreePane *tree = m_crib->tree();
        const auto centre = [&](const char *key) {
            return tree->visualRect(tree->nodes().indexOf(m_crib->node(key))).center();
        };
        QTest::mouseClick(tree->viewport(), Qt::RightButton, {}, centre("l3"));
        QCOMPARE(m_crib->frame.popUps, QStringList("mnuTreePopType"));
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            QTest::mousePress(tree->viewport(), button, {}, centre("l3"));
            QTest::mouseRelease(tree->viewport(), button, {}, {5, tree->viewport()->height() - 5});
            QCOMPARE(tree->selectedNode()->key, "l1");
        }
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::ControlModifier, centre("l1"));
        QVERIFY(tree->selectionModel()->isSelected(tree->currentIndex()));
    }

    void refreshKeepsThePlace()
    {
        m_crib->goTo(0, "l2", "r1 r2");
        m_crib->run({"UPDATE Types SET Description='Anew' WHERE ID=2", "UPDATE Tools SET Out=-1 WHERE ID=2"});
        explorer().ui.cmdRefresh->click();
        QCOMPARE(explorer().ui.lblList->text(), "Contents of 'Tools\\Wrenches\\Anew'");
        QCOMPARE(explorer().ui.lblSelected->text(), "2 selected"); // lent by somebody, without a loan
        explorer().narrowSelection();
        QCOMPARE(explorer().ui.lblSelected->text(), "1 of 2 selected");
        explorer().removeSelectedItem(); // as when it is scrapped
        QCOMPARE(explorer().selectedItem()->key, "co3");
    }

    void editingAndDeletingKeepThePlace()
    {
        m_crib->goTo(0, "l2", "r1");
        whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
            form.ui.txtDescription->setText("Another name");
            form.ui.cmdOK->click();
        });
        explorer().cmdEdit_Click();
        QCOMPARE(explorer().selectedItem()->key, "r1");
        QCOMPARE(explorer().selectedItem()->text, "Another name");
        ScriptedUser user(QMessageBox::Yes, 2);
        explorer().ui.cmdDelete->click();
        QCOMPARE(explorer().selectedItem()->key, "r2"); // the next one
        m_crib->goTo(0, "l4");
        explorer().ui.cmdDelete->click();
        QCOMPARE(m_crib->tree()->selectedNode()->key, "l2"); // the one above
        QCOMPARE(m_crib->keys(), QStringList({"r2", "co3"}));
    }

    void purgeAsksOnce()
    {
        m_crib->insert("Scrap (ToolID,Description,JobOrOH,LineItemTypeId)", {"72,'Drill 8',1300,4"});
        m_crib->goTo(3, "C1250", "j16384 j16385");
        // A kind that is opened reads its jobs anew.
        m_crib->tree()->collapse(m_crib->tree()->nodes().indexOf(m_crib->node("l4")));
        m_crib->tree()->expandNode(m_crib->node("l4"));
        ScriptedUser user(QMessageBox::Yes);
        user.answers(QMessageBox::Ok);
        explorer().ui.cmdDelete->click();
        QVERIFY(user.seen[0].text.startsWith("You are about to delete the selected tool."));
        QCOMPARE(user.seen[1].text, "Selected Scrapped Tool(s) deleted.");
        QCOMPARE(m_crib->rows("Select ToolID from Scrap"), QStringList("72"));
        QCOMPARE(m_crib->rows("Select Count(*) from CheckOutIn where Tool_Id=70"), QStringList("0"));
        QCOMPARE(m_crib->tree()->selectedNode()->key, "l4"); // what is left of the way there
        QVERIFY(!explorer().selectedItem());
    }

    void aFailedViewLeavesNothingOfTheOneBefore()
    {
        m_crib->run({"INSERT INTO Scrap (Description,JobOrOH,LineItemTypeId) VALUES('Drill 9',1250,5)",
                     "INSERT INTO Operation (OperNo,Description,OperType) VALUES(1250,'Odd','O')"});
        m_crib->goTo(0, "l2", "r1");
        ScriptedUser user(QMessageBox::Ok);
        explorer().ui.optMode3->click();
        QCOMPARE(user.texts(), QStringList("Key is not unique in collection"));
        QCOMPARE(m_crib->keys(), QStringList({"s4", "s5"}));
        QCOMPARE(m_crib->tree()->selectedNode()->key, "x0");

        // A job and an operation of one number have one key; the second one shows when the first one is gone.
        m_crib->go("C1250");
        user.answers(QMessageBox::Yes).answers(QMessageBox::Ok);
        explorer().ui.cmdDelete->click();
        QVERIFY(m_crib->node("C1250"));
        QCOMPARE(m_crib->tree()->selectedNode()->key, "x0");

        // A view that cannot even be begun leaves the one before as it was.
        Session::database().executeNative("ALTER TABLE [Locations] RENAME TO [Elsewhere]");
        user.answers(QMessageBox::Ok);
        explorer().ui.optMode1->click();
        QCOMPARE(explorer().TreeMode(), "scrap");
        QVERIFY(explorer().ui.optMode3->isChecked());
        QCOMPARE(m_crib->list()->items().columns().back().caption, "Date Scrapped");
    }

private:
    using Stop = void (*)(ChangeBar *);
    std::optional<CribExplorer> m_crib;
};

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
