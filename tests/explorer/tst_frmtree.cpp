#include "common/ItemKeys.h"
#include "common/ProgramState.h"
#include "explorer/frmTree.h"
#include "explorer/frmTreeSelect.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeFrame.h"
#include "tests/support/ScriptedUser.h"

#include <QDrag>
#include <QMimeData>
#include <QSignalSpy>

/// The explorer's window: its trees, its list, and how the user gets about and moves things in them.
class TestFrmTree : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void startsInTypeView();
    void treesOfTheFourViews_data();
    void treesOfTheFourViews();
    void listsOfTheFourViews_data();
    void listsOfTheFourViews();
    void apostropheBreaksTheCheckedOutList();
    void sameNumberForJobAndOperation();
    void kindsAreReadAnewWhenOpened();
    void headingsSort();
    void popUps_data();
    void popUps();
    void doubleClickFollows_data();
    void doubleClickFollows();
    void listMoves_data();
    void listMoves();
    void movesByKey();
    void nodeMoves_data();
    void nodeMoves();
    void aDragStartsOnAnotherRowOnly();
    void commandKeysWinOverOtherCaptions();
    void keyboardDecidesWhatCommandsActOn();
    void treeBuildPreparesNothingTwice();

private:
    frmTree &explorer() { return frmTree::instance(); }
    KeyedTree::Node *node(const QString &key) { return explorer().ui.tvMain->nodes().find(key); }
    void go(const QString &key);
    void view(int option);
    QStringList treeLines(const KeyedTree::Node *node, int depth = 0);
    QStringList listLines();
    void select(const QStringList &keys);
    void drop(const QString &format, const QString &targetKey);

    std::unique_ptr<CribDatabase> m_crib;
    std::unique_ptr<FakeFrame> m_frame;
};

void TestFrmTree::init()
{
    m_crib = std::make_unique<CribDatabase>();
    m_crib->run({
        "INSERT INTO Types (Description,Parent) VALUES('Drills',0)",
        "INSERT INTO Types (Description,Parent) VALUES('\u00c4xte',0)",
        "INSERT INTO Types (Description,Parent) VALUES('Nobody finds me',99)",
        "INSERT INTO Locations (Description,Parent) VALUES('Shelf 1',1)",
        "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
        " VALUES(1,1,'Fenwick','W-10','Open wrench 10',12.5,0)",
        "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
        " VALUES(1,2,'','','Open wrench 13',13,-1)",
        "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
        " VALUES(2,3,'Orrin','T-1','Torque wrench',200,-1)",
        "INSERT INTO Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)"
        " VALUES(2,3,'Orrin','T-1','Torque wrench',200,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(2,'17',1250,4,#2026-03-04 13:05:09#,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(3,'18',10,5,#2026-03-05 08:00:00#,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(4,'21',10,5,#2026-03-06 08:00:00#,-1)",
        "INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active) "
        "VALUES(1,'21',10,5,#2026-01-06 08:00:00#,0)",
        "INSERT INTO Scrap (ToolID,TypeDescription,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId)"
        " VALUES(70,'Drills','D-1','Drill 5',21,#2025-12-31 23:59:00#,1250,4)",
        "INSERT INTO Scrap (ToolID,TypeDescription,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId)"
        " VALUES(71,'Drills','D-2','Drill 6',99,#2025-12-30 07:00:00#,1250,4)",
        "INSERT INTO Scrap (ToolID,TypeDescription,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId)"
        " VALUES(72,'Drills','D-3','Drill 7',17,#2025-12-29 07:00:00#,900,4)",
        "INSERT INTO Scrap (ToolID,TypeDescription,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId)"
        " VALUES(73,'Drills','D-4','Drill 8',17,#2025-12-28 07:00:00#,11,5)",
    });
    ProgramState::TreeHasFocus = false;
    m_frame = std::make_unique<FakeFrame>();
    explorer().Startup(true);
}

void TestFrmTree::cleanup()
{
    frmTree::unload();
    m_frame.reset();
    m_crib.reset();
}

void TestFrmTree::go(const QString &key)
{
    TreeView *tree = explorer().ui.tvMain;
    tree->selectNode(node(key));
    emit tree->nodeClicked(node(key));
}

void TestFrmTree::view(int option)
{
    explorer().findChild<QRadioButton *>(QStringLiteral("optMode%1").arg(option))->click();
}

QStringList TestFrmTree::treeLines(const KeyedTree::Node *node, int depth)
{
    QStringList lines(QString(depth, '.') + node->key + ' ' + node->text);
    for (const auto &child : node->children)
        lines += treeLines(child.get(), depth + 1);
    return lines;
}

QStringList TestFrmTree::listLines()
{
    QStringList lines;
    const KeyedList &list = explorer().ui.lstToolList->items();
    for (int row = 0; row < list.count(); ++row) {
        const ListItem &item = list.item(row);
        lines.append((QStringList{item.key, QString::number(item.icon), item.text} + item.subItems).join('|'));
    }
    return lines;
}

void TestFrmTree::select(const QStringList &keys)
{
    ToolListView *list = explorer().ui.lstToolList;
    list->clearSelection();
    for (const QString &key : keys)
        list->selectionModel()->setCurrentIndex(list->items().index(list->items().find(key), 0),
                                                QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void TestFrmTree::drop(const QString &format, const QString &targetKey)
{
    TreeView *tree = explorer().ui.tvMain;
    tree->expandAll();
    const QPoint place = tree->visualRect(tree->nodes().indexOf(node(targetKey))).center();
    QMimeData data;
    data.setData(format, {});
    QDragEnterEvent enter(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree->viewport(), &enter);
    QDragMoveEvent move(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree->viewport(), &move);
    QVERIFY(move.isAccepted());
    QCOMPARE(tree->dropHighlight(), node(targetKey));
    QDropEvent dropped(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree->viewport(), &dropped);
    QCOMPARE(tree->dropHighlight(), nullptr);
}

void TestFrmTree::startsInTypeView()
{
    QCOMPARE(m_frame->progress, QStringList({"5Loading Data from database...", "40", "100"}));
    QCOMPARE(explorer().TreeMode(), "type");
    QCOMPARE(explorer().ui.tvMain->selectedNode(), node("x0"));
    QVERIFY(explorer().ui.tvMain->isExpanded(explorer().ui.tvMain->currentIndex()));
    QCOMPARE(explorer().ui.lblList->text(), "Contents of 'Tools'");
    QCOMPARE(listLines(), QStringList({"t4|3|\u00c4xte", "t3|3|Drills", "t1|3|Wrenches"}));

    view(1);
    explorer().Startup(false); // it is open already
    QCOMPARE(explorer().TreeMode(), "location");

    QSignalSpy unloads(&explorer(), &frmTree::FormUnload);
    explorer().close();
    QCOMPARE(unloads.count(), 1);
}

void TestFrmTree::treesOfTheFourViews_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("nodes");

    QTest::newRow("types, an orphan left out")
        << 0 << "Tool Types"
        << QStringList({"x0 Tools", ".l4 \u00c4xte", ".l3 Drills", ".l1 Wrenches", "..l2 Torque wrenches"});
    QTest::newRow("locations") << 1 << "Tool Locations"
                               << QStringList({"x0 Tools", ".l1 Cabinet A", "..l3 Shelf 1", ".l2 Cabinet B"});
    QTest::newRow("checked out, one node for two alike")
        << 2 << "Tools Checked Out" << QStringList({"x0 Tools", ".l1 Open wrench 13", ".l2 Torque wrench"});
    QTest::newRow("scrap, in the order of the texts")
        << 3 << "Tools Scrapped"
        << QStringList({"x0 Tools", ".l4 Job", "..C1250 1250", "..C900 900", ".l5 Overhead", "..C11 Repair"});
}

void TestFrmTree::treesOfTheFourViews()
{
    QFETCH(int, option);
    view(option);
    QTEST(treeLines(node("x0")), "nodes");
    QTEST(explorer().ui.lblTree->text(), "title");
    QVERIFY(!explorer().ui.pB->isVisible());
}

void TestFrmTree::listsOfTheFourViews_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QStringList>("items");

    QTest::newRow("sub-types, in stock, out")
        << 0 << "l1"
        << "Contents of 'Tools\\Wrenches'"
        << QStringList({"t2|3|Torque wrenches", "r1|6|Open wrench 10|W-10|..\\Wrenches|..\\Cabinet A|Fenwick|",
                        "co2|1|Open wrench 13||..\\Wrenches|..\\Cabinet B||17"});
    QTest::newRow("sub-locations") << 1 << "l1"
                                   << "Contents of 'Tools\\Cabinet A'"
                                   << QStringList({"l3|3|Shelf 1",
                                                   "r1|6|Open wrench 10|W-10|..\\Wrenches|..\\Cabinet A|Fenwick|"});
    QTest::newRow("checked-out root") << 2 << "x0"
                                      << "Contents of 'Tools'"
                                      << QStringList({"co1|3|Open wrench 13", "co2|3|Torque wrench"});
    QTest::newRow("two tools of one description")
        << 2 << "l2"
        << "Contents of 'Tools\\Torque wrench'"
        << QStringList({"co3|1|Torque wrench|T-1|Miller, Anna|2026-03-05 08:00:00|..\\Torque wrenches|..\\Shelf 1",
                        "co4|1|Torque wrench|T-1|Baker, Tom|2026-03-06 08:00:00|..\\Torque wrenches|..\\Shelf 1"});
    QTest::newRow("scrap root") << 3 << "x0"
                                << "Contents of 'Tools'" << QStringList({"s4|3|Job", "s5|3|Overhead"});
    QTest::newRow("operations") << 3 << "l5"
                                << "Contents of 'Tools\\Overhead'" << QStringList({"l11|3|Repair"});
    QTest::newRow("an employee who is gone")
        << 3 << "C1250"
        << "Contents of 'Tools\\Job\\1250'"
        << QStringList({"j16384|7|Drill 5|D-1|..\\Drills|Baker, Tom|12/31/25 23:59",
                        "j16385|7|Drill 6|D-2|..\\Drills|, |12/30/25 07:00"});
}

void TestFrmTree::listsOfTheFourViews()
{
    QFETCH(int, option);
    QFETCH(QString, node);
    view(option);
    go(node);
    QStringList lines = listLines();
    QFETCH(QStringList, items);
    if (option >= 2) { // these come in no order of their own
        lines.sort();
        items.sort();
    }
    QCOMPARE(lines, items);
    QTEST(explorer().ui.lblList->text(), "heading");
    QVERIFY(ProgramState::TreeHasFocus);
}

void TestFrmTree::apostropheBreaksTheCheckedOutList()
{
    m_crib->run({"UPDATE Tools SET Description='Miller''s torque wrench' WHERE ID=3"});
    view(2);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    for (const auto &child : node("x0")->children)
        if (child->text.startsWith("Miller"))
            go(child->key);
    QCOMPARE(user.seen.size(), 1);
    QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
    QVERIFY(!QApplication::overrideCursor());
}

// The second one of a number cannot be shown; it ends the build but not the program.
void TestFrmTree::sameNumberForJobAndOperation()
{
    m_crib->run({"INSERT INTO Scrap (Description,JobOrOH,LineItemTypeId) VALUES('Drill 9',11,4)"});
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    view(3);
    QCOMPARE(user.texts(), QStringList("Key is not unique in collection"));
    QVERIFY(node("C11"));
    QVERIFY(explorer().ui.tvMain->viewport()->isVisible());
}

void TestFrmTree::kindsAreReadAnewWhenOpened()
{
    view(3);
    m_crib->run({"DELETE FROM Scrap WHERE JobOrOH=900",
                 "INSERT INTO Scrap (Description,JobOrOH,LineItemTypeId) VALUES('Drill 9',7001,4)"});
    explorer().ui.tvMain->expandNode(node("l4"));
    QCOMPARE(treeLines(node("l4")), QStringList({"l4 Job", ".C1250 1250", ".C7001 7001"}));
}

void TestFrmTree::headingsSort()
{
    go("l1");
    QHeaderView *header = explorer().ui.lstToolList->header();
    emit header->sectionClicked(0);
    QCOMPARE(listLines().first().section('|', 0, 0), "r1");
    QTest::keyClick(explorer().ui.lstToolList, Qt::Key_2, Qt::ControlModifier); // the second heading
    QCOMPARE(listLines().first().section('|', 0, 0), "r1"); // W-10 is the last part number, descending
    go("x0");
    go("l1");
    QCOMPARE(listLines().first().section('|', 0, 0), "r1"); // still on
    view(2);
    QCOMPARE(explorer().ui.lstToolList->items().columns()[3].caption, "Date Out");
}

void TestFrmTree::popUps_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QStringList>("menus");

    QTest::newRow("type node") << 0 << "l1"
                               << "" << QStringList("mnuTreePopType");
    QTest::newRow("location node") << 1 << "l1"
                                   << "" << QStringList("mnuTreePopLoc");
    QTest::newRow("scrap group") << 3 << "l4"
                                 << "" << QStringList("mnuTreePopScrap");
    QTest::newRow("checked-out node") << 2 << "l1"
                                      << "" << QStringList();
    QTest::newRow("tool in stock") << 0 << "l1"
                                   << "r1" << QStringList("mnuTreePopTool");
    QTest::newRow("tool out") << 0 << "l1"
                              << "co2" << QStringList("mnuListCheckIn");
    QTest::newRow("folder") << 0 << "l1"
                            << "t2" << QStringList();
    QTest::newRow("tool out in its view") << 2 << "l2"
                                          << "co3" << QStringList("mnuListCheckIn");
    QTest::newRow("description folder, keyed alike") << 2 << "x0"
                                                     << "co2" << QStringList();
    QTest::newRow("scrapped tool") << 3 << "C900"
                                   << "j16386" << QStringList("mnuListPopScrap");
}

void TestFrmTree::popUps()
{
    QFETCH(int, option);
    QFETCH(QString, node);
    QFETCH(QString, item);
    view(option);
    explorer().ui.tvMain->expandAll();
    go(node);
    const QStringList before = listLines();
    QWidget *place = explorer().ui.tvMain->viewport();
    QRect rect = explorer().ui.tvMain->visualRect(explorer().ui.tvMain->currentIndex());
    if (!item.isEmpty()) {
        ToolListView *list = explorer().ui.lstToolList;
        place = list->viewport();
        rect = list->visualRect(list->items().index(list->items().find(item), 0));
    }
    QTest::mouseClick(place, Qt::RightButton, {}, rect.center());
    QTEST(m_frame->popUps, "menus");
    QCOMPARE(ProgramState::TreeHasFocus, item.isEmpty());
    QCOMPARE(listLines(), before);
}

void TestFrmTree::doubleClickFollows_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("to");

    QTest::newRow("type") << 0 << "x0"
                          << "t1"
                          << "l1";
    QTest::newRow("location") << 1 << "l1"
                              << "l3"
                              << "l3";
    QTest::newRow("description") << 2 << "x0"
                                 << "co2"
                                 << "l2";
    QTest::newRow("kind") << 3 << "x0"
                          << "s5"
                          << "l5";
    QTest::newRow("job") << 3 << "l4"
                         << "l900"
                         << "C900";
    QTest::newRow("a tool leads nowhere") << 0 << "l1"
                                          << "r1"
                                          << "l1";
}

void TestFrmTree::doubleClickFollows()
{
    QFETCH(int, option);
    QFETCH(QString, from);
    QFETCH(QString, item);
    view(option);
    go(from);
    select({item});
    emit explorer().ui.lstToolList->itemOpened();
    QTEST(explorer().ui.tvMain->selectedNode()->key, "to");
}

void TestFrmTree::listMoves_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QStringList>("after");

    const QStringList asBefore{"1|0|1|1", "2|1|2|0"};
    const QString refusal = "A node can't be made a child of its own children.";
    QTest::newRow("tool and folder together")
        << 0 << "l1" << QStringList({"r1", "t2"}) << "l3" << QStringList("Move the items to Drills?")
        << QStringList({"1|0|3|1", "2|3|2|0"});
    QTest::newRow("a tool to another location")
        << 1 << "l1" << QStringList("r1") << "l2" << QStringList("Move the items to Cabinet B?")
        << QStringList({"1|0|1|2", "2|1|2|0"});
    QTest::newRow("No moves nothing") << 0 << "l1" << QStringList("r1") << "l4"
                                      << QStringList("Move the items to \u00c4xte?") << asBefore;
    QTest::newRow("a tool that is out stays") << 0 << "l1" << QStringList("co2") << "l3"
                                              << QStringList("You must Check In the tool before moving.") << asBefore;
    QTest::newRow("one that is out holds the others back")
        << 0 << "l1" << QStringList({"co2", "r1"}) << "l3" << QStringList("You must Check In the tool before moving.")
        << asBefore;
    QTest::newRow("a folder onto itself") << 0 << "x0" << QStringList("t1") << "l1" << QStringList() << asBefore;
    QTest::newRow("a folder below itself")
        << 0 << "x0" << QStringList("t1") << "l2" << QStringList(refusal) << asBefore;
    QTest::newRow("where it is") << 0 << "l1" << QStringList("r1") << "l1" << QStringList() << asBefore;
}

void TestFrmTree::listMoves()
{
    QFETCH(int, option);
    QFETCH(QString, from);
    QFETCH(QStringList, items);
    QFETCH(QString, to);
    QFETCH(QStringList, messages);
    view(option);
    go(from);
    select(items);
    explorer().ui.lstToolList->DragArmed = true;
    ScriptedUser user;
    const bool agrees = to != "l4";
    if (!messages.isEmpty())
        user.answers(agrees ? QMessageBox::Yes : QMessageBox::No);
    drop(ToolListView::dragFormat, to);

    QCOMPARE(user.texts(), messages);
    QStringList after = m_crib->rows("SELECT Tools.ID,0,Type,Location FROM Tools WHERE ID=1")
        + m_crib->rows("SELECT ID,Parent,ID,0 FROM Types WHERE ID=2");
    after[1] = m_crib->rows("SELECT ID,Parent FROM Types WHERE ID=2").first() + "|2|0";
    QTEST(after, "after");
    const bool moved = messages.value(0).startsWith("Move") && agrees;
    QCOMPARE(explorer().ui.tvMain->selectedNode()->key, moved ? to : from);
    if (moved && items.contains("t2"))
        QCOMPARE(node("l2")->parent, node("l3"));
}

void TestFrmTree::movesByKey()
{
    const auto move = [this](QWidget *focus, const QList<Qt::Key> &keys) {
        whenModal<frmTreeSelect>([keys](frmTreeSelect &picker) {
            for (const Qt::Key key : keys)
                QTest::keyClick(picker.ui.tvMain, key);
            QTest::keyClick(&picker, Qt::Key_Return);
        });
        ScriptedUser user;
        user.answers(QMessageBox::Yes);
        explorer().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&explorer()));
        focus->setFocus();
        QTest::keyClick(focus, Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(explorer().ui.tvMain->dropHighlight(), nullptr);
    };
    go("l1");
    QVERIFY(explorer().selectItem("r1"));
    move(explorer().ui.lstToolList, {Qt::Key_D});
    QCOMPARE(m_crib->rows("SELECT Type FROM Tools WHERE ID=1"), QStringList("3"));
    go("l2");
    move(explorer().ui.tvMain, {});
    QCOMPARE(m_crib->rows("SELECT Parent FROM Types WHERE ID=2"), QStringList("0"));
}

void TestFrmTree::nodeMoves_data()
{
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QString>("parentAfter");

    QTest::newRow("under another node") << "l2"
                                        << "l3" << QStringList("Move the items to Drills?") << "3";
    QTest::newRow("to the top") << "l2"
                                << "x0" << QStringList("Move the items to Tools?") << "0";
    QTest::newRow("below itself") << "l1"
                                  << "l2" << QStringList("A node can't be made a child of its own children.") << "0";
    QTest::newRow("onto its own parent") << "l2"
                                         << "l1" << QStringList() << "1";
}

void TestFrmTree::nodeMoves()
{
    QFETCH(QString, dragged);
    QFETCH(QString, target);
    QFETCH(QStringList, messages);
    ScriptedUser user;
    if (!messages.isEmpty())
        user.answers(QMessageBox::Yes);
    TreeView *tree = explorer().ui.tvMain;
    tree->setDropHighlight(node(target));
    emit tree->nodeDropped(node(dragged));
    QCOMPARE(user.texts(), messages);
    QTEST(m_crib->rows("SELECT Parent FROM Types WHERE ID=" + dragged.mid(1)).first(), "parentAfter");
    const QString parent = node(dragged)->parent->key.mid(1);
    QTEST(parent, "parentAfter");
}

void TestFrmTree::aDragStartsOnAnotherRowOnly()
{
    go("l1");
    ToolListView *list = explorer().ui.lstToolList;
    const QRect first = list->visualRect(list->items().index(1, 0)), next = list->visualRect(list->items().index(2, 0));
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, first.topLeft() + QPoint(2, 2));
    QCOMPARE(list->DragItem, 1);
    QCOMPARE(explorer().selectedItem()->key, "r1");
    const auto moveTo = [&](const QPoint &place) {
        QMouseEvent move(QEvent::MouseMove, place, list->viewport()->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(list->viewport(), &move);
    };
    // Escape ends a drag as soon as there is one.
    QTimer endDrag;
    connect(&endDrag, &QTimer::timeout, list, [] { QDrag::cancel(); });
    endDrag.start(1);
    moveTo(first.bottomRight() - QPoint(2, 1));
    moveTo(first.topLeft() + QPoint(30, 1));
    QVERIFY(list->DragArmed);
    moveTo(next.center());
    moveTo(next.bottomRight());
    QVERIFY(!list->DragArmed); // there was one, and it has ended
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, next.center());

    view(2);
    go("l2");
    QVERIFY(!list->dragEnabled());
}

// Alt+T stands on a view and on a menu of the frame, too.
void TestFrmTree::commandKeysWinOverOtherCaptions()
{
    QSignalSpy lends(explorer().ui.cmdCheckOut, &QPushButton::clicked);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    explorer().ui.lstToolList->setFocus();
    explorer().ui.optMode1->setChecked(true);
    QTest::keyClick(explorer().ui.lstToolList, Qt::Key_T, Qt::AltModifier);
    QCOMPARE(lends.count(), 1);
    QCOMPARE(explorer().TreeMode(), "location");
    QCOMPARE(user.texts(), QStringList("Please select a tool to Check Out."));
    QCOMPARE(explorer().selectedItem()->key, "l1");

    user.answers(QMessageBox::Ok);
    explorer().ui.tvMain->setFocus();
    ProgramState::TreeHasFocus = true;
    QTest::keyClick(explorer().ui.tvMain, Qt::Key_Delete);
    QCOMPARE(user.texts().last(), "You cannot delete the Tools node.");
    m_crib->run({"INSERT INTO Locations (Description,Parent) VALUES('Shelf 2',0)"});
    QTest::keyClick(explorer().ui.tvMain, Qt::Key_F5);
    QCOMPARE(treeLines(node("x0")).last(), ".l4 Shelf 2");
}

void TestFrmTree::keyboardDecidesWhatCommandsActOn()
{
    TreeView *tree = explorer().ui.tvMain;
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Down);
    QCOMPARE(explorer().ui.lblList->text(), "Contents of 'Tools\\\u00c4xte'");
    QVERIFY(ProgramState::TreeHasFocus);
    go("l1");
    ToolListView *list = explorer().ui.lstToolList;
    list->selectRow(0);
    QTest::keyClick(list, Qt::Key_Down);
    QVERIFY(!ProgramState::TreeHasFocus);
    select({"t2"});
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(tree->selectedNode()->key, "l2");
    QTest::keyClick(list, Qt::Key_Menu);
}

// However many folders there are, a tree asks with the same few statements.
void TestFrmTree::treeBuildPreparesNothingTwice()
{
    explorer().ViewByType();
    const qint64 before = Session::database().counters().prepared;
    QStringList folders;
    for (int folder = 0; folder < 50; ++folder)
        folders.append(QStringLiteral("INSERT INTO Types (Description,Parent) VALUES('More %1',3)").arg(folder));
    m_crib->run(folders);
    const qint64 inserts = Session::database().counters().prepared - before;
    explorer().ViewByType();
    constexpr int readScopes = 2; // of the tree and of the list
    QCOMPARE(Session::database().counters().prepared, before + inserts + readScopes);
    QCOMPARE(Session::database().counters().fullScanSteps, 0);
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    TestFrmTree test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_frmtree.moc"
