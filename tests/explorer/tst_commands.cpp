#include "catalogue/FolderEditor.h"
#include "catalogue/frmToolNewEdit.h"
#include "common/ProgramState.h"
#include "explorer/frmTree.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeFrame.h"
#include "tests/support/ScriptedUser.h"
#include "transactions/frmScrap.h"
#include "transactions/frmScrapRestore.h"

/// The explorer's commands: what each says, opens and deletes.
class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void refusals_data();
    void refusals();
    void newOffersTheFolderOfTheView();
    void newToolLandsWhereItShould_data();
    void newToolLandsWhereItShould();
    void newAndRenamedFoldersShowAtOnce();
    void editingKeepsTheSelection();
    void deletions_data();
    void deletions();
    void deletingKeepsThePlace();
    void purgeAsksOnce();
    void scrapAndRestore();
    void aFolderNumberedLikeAToolIsNone();
    void aFailedViewLeavesNothingOfTheOneBefore();
    void aScrapGivenUpLeavesTheToolInTheCrib();

private:
    frmTree &explorer() { return frmTree::instance(); }
    /// Puts the explorer into a view, at a node, with items selected; without items it acts on the tree.
    void goTo(int option, const QString &node, const QStringList &items = {});
    QStringList keys();

    std::unique_ptr<CribDatabase> m_crib;
    std::unique_ptr<FakeFrame> m_frame;
};

void TestCommands::init()
{
    m_crib = std::make_unique<CribDatabase>();
    const auto tool = [](int type, int location, const QString &description, int out) {
        return QStringLiteral("INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
                              " VALUES(%1,%2,'Fenwick','W-10','%3',12.5,%4)")
            .arg(type)
            .arg(location)
            .arg(description)
            .arg(out);
    };
    m_crib->run({
        "INSERT INTO Types (Description,Parent) VALUES('Drills',0)",
        "INSERT INTO Types (Description,Parent) VALUES('Empty',2)",
        tool(2, 1, "Torque wrench", 0),
        tool(2, 1, "Torque wrench long", 0),
        tool(2, 2, "Torque wrench out", -1),
        tool(3, 1, "Drill 5", 0),
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(3,'17',1250,4,#2026-03-04#,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(1,'17',1250,4,#2026-03-04#,0)",
        "INSERT INTO Scrap "
        "(ToolID,Type,TypeDescription,Description,PricePer,Employee,ScrapDate,JobOrOH,LineItemTypeId,Location)"
        " VALUES(70,3,'Drills','Drill 6',3,21,#2025-12-31#,1250,4,1)",
        "INSERT INTO Scrap "
        "(ToolID,Type,TypeDescription,Description,PricePer,Employee,ScrapDate,JobOrOH,LineItemTypeId,Location)"
        " VALUES(71,3,'Drills','Drill 7',3,21,#2025-12-31#,1250,4,1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(70,'17',1250,4,#2026-03-04#,0)",
    });
    m_frame = std::make_unique<FakeFrame>();
    explorer().Startup(false);
}

void TestCommands::cleanup()
{
    frmTree::unload();
    m_frame.reset();
    m_crib.reset();
}

void TestCommands::goTo(int option, const QString &key, const QStringList &items)
{
    explorer().findChild<QRadioButton *>(QStringLiteral("optMode%1").arg(option))->click();
    TreeView *tree = explorer().ui.tvMain;
    tree->expandAll();
    tree->selectNode(tree->nodes().find(key));
    emit tree->nodeClicked(tree->selectedNode());
    ToolListView *list = explorer().ui.lstToolList;
    for (const QString &item : items)
        list->selectionModel()->setCurrentIndex(list->items().index(list->items().find(item), 0),
                                                QItemSelectionModel::Select | QItemSelectionModel::Rows);
    ProgramState::TreeHasFocus = items.isEmpty();
}

QStringList TestCommands::keys()
{
    QStringList all;
    const KeyedList &list = explorer().ui.lstToolList->items();
    for (int row = 0; row < list.count(); ++row)
        all.append(list.item(row).key);
    return all;
}

void TestCommands::refusals_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("message");

    const auto row = [](const char *button, int option, const char *node, const char *item, const char *message) {
        QTest::addRow("%s %d %s %s", button, option, node, item) << button << option << node << item << message;
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
    row("cmdNew", 2, "x0", "", "To add a tool use the New button while in the View by Type or View by Location mode. ");
    row("cmdNew", 3, "x0", "", "To add a tool use the New button while in the View by Type or View by Location mode. ");
}

void TestCommands::refusals()
{
    QFETCH(QString, button);
    QFETCH(int, option);
    QFETCH(QString, node);
    QFETCH(QString, item);
    QFETCH(QString, message);
    goTo(option, node, item.isEmpty() ? QStringList() : QStringList(item));
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    QTest::mouseClick(explorer().findChild<QPushButton *>(button), Qt::LeftButton);
    QCOMPARE(user.texts(), QStringList(message));
    QCOMPARE(user.seen[0].caption, "System Message");
    QCOMPARE(m_crib->rows("Select Count(*) from Types"), QStringList("4"));
    QCOMPARE(m_frame->popUps, QStringList());
}

void TestCommands::newOffersTheFolderOfTheView()
{
    goTo(0, "l2");
    QTest::mouseClick(explorer().ui.cmdNew, Qt::LeftButton);
    goTo(1, "l2");
    QTest::mouseClick(explorer().ui.cmdNew, Qt::LeftButton);
    QCOMPARE(m_frame->popUps,
             QStringList({"mnuTreeNew without mnuTreeNewLocation", "mnuTreeNew without mnuTreeNewType"}));
}

void TestCommands::newToolLandsWhereItShould_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("preset");

    QTest::newRow("the tree's type") << 0 << "l2"
                                     << ""
                                     << "Tools\\Wrenches\\Torque wrenches|2||";
    QTest::newRow("the tree's location") << 1 << "l1"
                                         << ""
                                         << "||Tools\\Cabinet A|1";
    QTest::newRow("a tool's type") << 0 << "l2"
                                   << "r1"
                                   << "Torque wrenches|2||";
    QTest::newRow("a folder's parent") << 0 << "l2"
                                       << "t4"
                                       << "Torque wrenches|2||";
    QTest::newRow("no folder above") << 0 << "x0"
                                     << "t3"
                                     << "";
    QTest::newRow("the root") << 1 << "x0"
                              << ""
                              << "";
}

void TestCommands::newToolLandsWhereItShould()
{
    QFETCH(int, option);
    QFETCH(QString, node);
    QFETCH(QString, item);
    QFETCH(QString, preset);
    goTo(option, node, item.isEmpty() ? QStringList() : QStringList(item));
    ScriptedUser user;
    if (preset.isEmpty()) {
        user.answers(QMessageBox::Ok);
        emit m_frame->TreeNewTool();
        QCOMPARE(
            user.texts(),
            QStringList(option == 0 ? "Please select a tool type first." : "Please select a tool location first."));
        return;
    }
    QString seen;
    whenModal<frmToolNewEdit>([&](frmToolNewEdit &form) {
        seen = form.ui.txtType->text() + '|' + form.ui.txtTypeId->text() + '|' + form.ui.txtLocation->text() + '|'
            + form.ui.txtLocationId->text();
    });
    emit m_frame->TreeNewTool();
    QCOMPARE(seen, preset);
}

void TestCommands::newAndRenamedFoldersShowAtOnce()
{
    goTo(0, "l1");
    const auto type = [](const QString &text) {
        whenModal<FolderEditor>([text](FolderEditor &form) {
            auto *box = form.findChild<QLineEdit *>("txtType");
            box->setText(text);
            form.ui.cmdOK->click();
        });
    };
    type("Hook wrenches");
    emit m_frame->TreeNewType();
    KeyedTree &tree = explorer().ui.tvMain->nodes();
    QVERIFY(tree.find("l5"));
    QCOMPARE(KeyedTree::fullPath(tree.find("l5")), "Tools\\Wrenches\\Hook wrenches");
    QCOMPARE(keys(), QStringList({"t5", "t2"}));

    type("Spanners");
    explorer().cmdEdit_Click();
    QCOMPARE(tree.find("l1")->text, "Spanners");
    QCOMPARE(explorer().ui.lblList->text(), "Contents of 'Tools\\Spanners'");

    goTo(0, "l1", {"t5"}); // a folder in the list, not the selected node
    type("Hooks");
    explorer().cmdEdit_Click();
    QCOMPARE(tree.find("l5")->text, "Hooks");
    QCOMPARE(tree.find("l1")->text, "Spanners");
    QCOMPARE(explorer().ui.lstToolList->items().item(0).text, "Hooks");
}

void TestCommands::editingKeepsTheSelection()
{
    goTo(0, "l2", {"r2"});
    whenModal<frmToolNewEdit>([](frmToolNewEdit &form) {
        form.ui.txtDescription->setText("Another name");
        form.ui.cmdOK->click();
    });
    explorer().cmdEdit_Click();
    QCOMPARE(explorer().selectedItem()->key, "r2");
    QCOMPARE(explorer().selectedItem()->text, "Another name");
}

void TestCommands::deletions_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("agrees");
    QTest::addColumn<QString>("left"); // tools, types, loans

    const QString one =
        "You are about to delete the selected tool.\nAll checked in and checked out history will also be "
        "removed.\nThis can not be undone.\n Are you sure you want to continue?";
    const QString several =
        "You are about to delete selected tool(s) on the list.\nAll checked in and checked out history "
        "will also be removed.\nThis can not be undone. Are you sure?";
    const QString folder = "You are about to delete a tool type. This can not be undone. Are you sure?";
    QTest::newRow("one tool with its loans") << 0 << "l2" << QStringList("r1") << one << true << "3|4|2";
    QTest::newRow("No keeps it") << 0 << "l2" << QStringList("r1") << one << false << "4|4|3";
    QTest::newRow("tools and an empty folder")
        << 0 << "l2" << QStringList({"r1", "r2", "t4"}) << several << true << "2|3|2";
    QTest::newRow("a folder of the list") << 0 << "l2" << QStringList("t4") << folder << true << "4|3|3";
    QTest::newRow("a folder of the tree") << 0 << "l4" << QStringList() << folder << true << "4|3|3";
}

void TestCommands::deletions()
{
    QFETCH(int, option);
    QFETCH(QString, node);
    QFETCH(QStringList, items);
    QFETCH(QString, question);
    QFETCH(bool, agrees);
    QFETCH(QString, left);
    goTo(option, node, items);
    ScriptedUser user;
    user.answers(agrees ? QMessageBox::Yes : QMessageBox::No);
    explorer().ui.cmdDelete->click();
    QCOMPARE(user.texts(), QStringList(question));
    QCOMPARE(user.seen[0].defaultButton, QMessageBox::No);
    QCOMPARE(user.seen[0].icon, QMessageBox::Question);
    QCOMPARE((m_crib->rows("Select Count(*) from Tools") + m_crib->rows("Select Count(*) from Types")
              + m_crib->rows("Select Count(*) from CheckOutIn"))
                 .join('|'),
             left);
    const bool folderGone = agrees && (items.contains("t4") || node == "l4");
    QCOMPARE(explorer().ui.tvMain->nodes().find("l4") == nullptr, folderGone);
}

void TestCommands::deletingKeepsThePlace()
{
    goTo(0, "l2", {"r1"});
    ScriptedUser user;
    user.answers(QMessageBox::Yes, 2);
    explorer().ui.cmdDelete->click();
    QCOMPARE(explorer().selectedItem()->key, "r2"); // the next one
    goTo(0, "l4");
    explorer().ui.cmdDelete->click();
    QCOMPARE(explorer().ui.tvMain->selectedNode()->key, "l2"); // the one above
    QCOMPARE(keys(), QStringList({"r2", "co3"}));
}

void TestCommands::purgeAsksOnce()
{
    goTo(3, "C1250", {"j16384", "j16385"});
    ScriptedUser user;
    user.answers(QMessageBox::Yes).answers(QMessageBox::Ok);
    explorer().ui.cmdDelete->click();
    QCOMPARE(user.seen.size(), 2);
    QVERIFY(user.seen[0].text.startsWith("You are about to delete the selected tool."));
    QCOMPARE(user.seen[1].text, "Selected Scrapped Tool(s) deleted.");
    QCOMPARE(m_crib->rows("Select Count(*) from Scrap"), QStringList("0"));
    QCOMPARE(m_crib->rows("Select Count(*) from CheckOutIn where Tool_Id=70"), QStringList("0"));
    QCOMPARE(explorer().ui.tvMain->nodes().root()->children.size(), size_t(0)); // nothing is scrapped any more
}

// From the crib to the scrap and back, as menus and buttons lead.
void TestCommands::scrapAndRestore()
{
    ProgramState::SuiteInstalled = true;
    goTo(0, "l3", {"r4"});
    whenModal<frmScrap>([](frmScrap &form) {
        form.ui.dbcEmp->setText("BAKER TOM");
        form.ui.dbcJobType->setText("Job");
        form.ui.dbcJob->setText("12500");
        form.ui.dbcScrapReason->setText("Broken");
        form.ui.cmdOK->click();
    });
    explorer().cmdScrapTool_Click();
    QCOMPARE(m_crib->rows("Select ToolID,JobOrOH from Scrap where ID=16386"), QStringList("4|12500"));

    goTo(3, "C12500", {"j16386"});
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmScrapRestore>([](frmScrapRestore &form) { form.ui.cmdRestore->click(); });
    explorer().ui.cmdRestoreScrap->click();
    QCOMPARE(user.texts(), QStringList("Tool was successfully restored"));
    QCOMPARE(m_crib->rows("Select ID,Type,Out from Tools where ID=4"), QStringList("4|3|0"));
    QVERIFY(!explorer().ui.tvMain->nodes().find("C12500"));
    ProgramState::SuiteInstalled = false;
}

void TestCommands::aFolderNumberedLikeAToolIsNone()
{
    m_crib->run({"UPDATE Tools SET Out=-1 WHERE ID=1", "UPDATE CheckOutIn SET Active=-1 WHERE Tool_Id=1"});
    goTo(2, "x0", {"co1"});
    ScriptedUser user; // nobody is asked anything
    explorer().ui.cmdCheckIn->click();
    QCOMPARE(m_crib->rows("Select Tool_Id from CheckOutIn where Active=-1 order by Tool_Id"), QStringList({"1", "3"}));
}

void TestCommands::aFailedViewLeavesNothingOfTheOneBefore()
{
    m_crib->run({"INSERT INTO Scrap (Description,JobOrOH,LineItemTypeId) VALUES('Drill 9',1250,5)",
                 "INSERT INTO Operation (OperNo,Description,OperType) VALUES(1250,'Odd','O')"});
    goTo(0, "l2", {"r1"});
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    explorer().ui.optMode3->click();
    QCOMPARE(user.texts(), QStringList("Key is not unique in collection"));
    QCOMPARE(keys(), QStringList());
    QCOMPARE(explorer().ui.tvMain->selectedNode()->key, "x0");

    // A view that cannot even be begun leaves the one before as it was.
    Session::database().executeNative("ALTER TABLE Locations RENAME TO Elsewhere");
    user.answers(QMessageBox::Ok);
    explorer().ui.optMode1->click();
    QCOMPARE(explorer().TreeMode(), "scrap");
    QVERIFY(explorer().ui.optMode3->isChecked());
    QCOMPARE(explorer().ui.lstToolList->items().columns().back().caption, "Date Scrapped");
}

void TestCommands::aScrapGivenUpLeavesTheToolInTheCrib()
{
    goTo(0, "l2", {"co3"});
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    whenModal<frmScrap>([](frmScrap &form) {
        form.ui.cmdOK->click(); // no reason
        form.ui.cndCancel->click();
    });
    explorer().cmdScrapTool_Click();
    QCOMPARE(m_crib->rows("Select Out from Tools where ID=3"), QStringList("0"));
    QCOMPARE(explorer().selectedItem()->key, "r3");
    QCOMPARE(explorer().selectedItem()->icon, 6);
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    TestCommands test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_commands.moc"
