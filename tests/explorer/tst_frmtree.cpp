#include "explorer/frmTreeSelect.h"
#include "platform/reportengine/Report.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/CribExplorer.h"

#include <QDrag>
#include <QMimeData>
#include <QStatusBar>

/// The explorer's window: its trees, its list, and how the user gets about and moves things in them.
class TestFrmTree : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.emplace();
        m_crib->insert("Types (Description,Parent)", {"'Drills',0", "'\u00c4xte',0"});
        m_crib->damage({"INSERT INTO Types (Description,Parent) VALUES('Nobody finds me',99)"});
        m_crib->insert("Locations (Description,Parent)", {"'Shelf 1',1"});
        m_crib->insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)",
                       {"1,1,'Fenwick','W-10','Open wrench 10',12.5,0", "1,2,'','','Open wrench 13',13,-1",
                        "2,3,'Orrin','T-1','Torque wrench',200,-1", "2,3,'Orrin','T-1','Torque wrench',200,-1"});
        m_crib->insert("CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active)",
                       {"2,'17',1250,4,#2026-03-04 13:05:09#,-1", "3,'18',10,5,#2026-03-05 08:00:00#,-1",
                        "4,'21',10,5,#2026-03-06 08:00:00#,-1", "1,'21',10,5,#2026-01-06 08:00:00#,0"});
        m_crib->insert(
            "Scrap (ToolID,TypeDescription,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId)",
            {"70,'Drills','D-1','Drill 5',21,#2025-12-31 23:59:00#,1250,4",
             "71,'Drills','D-2','Drill 6',99,#2025-12-30 07:00:00#,1250,4",
             "72,'Drills','D-3','Drill 7',17,#2025-12-29 07:00:00#,900,4",
             "73,'Drills','D-4','Drill 8',17,#2025-12-28 07:00:00#,11,5"});
        explorer().TreeHasFocus = false;
        explorer().Startup(true);
    }

    void treesOfTheFourViews()
    {
        const std::pair<const char *, QStringList> trees[] = {
            {"Tool Types", {"x0 Tools", ".l4 \u00c4xte", ".l3 Drills", ".l1 Wrenches", "..l2 Torque wrenches"}},
            {"Tool Locations", {"x0 Tools", ".l1 Cabinet A", "..l3 Shelf 1", ".l2 Cabinet B"}},
            {"Tools Checked Out", {"x0 Tools", ".l1 Open wrench 13", ".l2 Torque wrench"}},
            {"Tools Scrapped", {"x0 Tools", ".l4 Job", "..C1250 1250", "..C900 900", ".l5 Overhead", "..C11 Repair"}}};
        for (int option = 0; option < 4; ++option) {
            m_crib->view(option);
            QCOMPARE(explorer().ui.lblTree->text(), trees[option].first);
            QCOMPARE(m_crib->treeLines(m_crib->node("x0")), trees[option].second);
            QVERIFY(!explorer().ui.pB->isVisible());
        }
    }

    void listsOfTheFourViews_data()
    {
        row("sub-types, in stock, out", 0, "l1", "Contents of 'Tools\\Wrenches'",
            QStringList({"t2|3|Torque wrenches", "r1|6|Open wrench 10|W-10|..\\Wrenches|..\\Cabinet A|Fenwick|",
                         "co2|1|Open wrench 13||..\\Wrenches|..\\Cabinet B||17"}));
        row("sub-locations", 1, "l1", "Contents of 'Tools\\Cabinet A'",
            QStringList({"l3|3|Shelf 1", "r1|6|Open wrench 10|W-10|..\\Wrenches|..\\Cabinet A|Fenwick|"}));
        row("checked-out root", 2, "x0", "Contents of 'Tools'",
            QStringList({"co1|3|Open wrench 13", "co2|3|Torque wrench"}));
        row("two tools of one description", 2, "l2", "Contents of 'Tools\\Torque wrench'",
            QStringList({"co3|1|Torque wrench|T-1|Miller, Anna|2026-03-05 08:00:00|..\\Torque wrenches|..\\Shelf 1",
                         "co4|1|Torque wrench|T-1|Baker, Tom|2026-03-06 08:00:00|..\\Torque wrenches|..\\Shelf 1"}));
        row("scrap root", 3, "x0", "Contents of 'Tools'", QStringList({"s4|3|Job", "s5|3|Overhead"}));
        row("operations", 3, "l5", "Contents of 'Tools\\Overhead'", QStringList({"l11|3|Repair"}));
        row("an employee who is gone", 3, "C1250", "Contents of 'Tools\\Job\\1250'",
            QStringList({"j16384|7|Drill 5|D-1|..\\Drills|Baker, Tom|12/31/25 23:59",
                         "j16385|7|Drill 6|D-2|..\\Drills|, |12/30/25 07:00"}));
    }

    void listsOfTheFourViews()
    {
        auto [option, node, heading, items] = fetched<int, QString, QString, QStringList>();
        m_crib->view(option);
        const qint64 scanned = Session::database().counters().fullScanSteps;
        m_crib->go(node);
        if (option < 2)
            QCOMPARE(Session::database().counters().fullScanSteps, scanned);
        QStringList lines = m_crib->listLines();
        if (option >= 2) { // these come in no order of their own
            lines.sort();
            items.sort();
        }
        QCOMPARE(lines, items);
        QCOMPARE(explorer().ui.lblList->text(), heading);
        QCOMPARE(m_crib->list()->dragEnabled(), option < 2);
    }

    void theListInSightCanBePrinted()
    {
        ProgramFolder::setPath(PROGRAM_DATA "/templates");
        const auto restore = qScopeGuard([] { ProgramFolder::setPath({}); });
        for (const auto &[option, key] : {std::pair(0, "l2"), {1, "l1"}, {2, "l2"}, {3, "l4"}, {3, "C1250"}}) {
            m_crib->goTo(option, key);
            const View &view = *explorer().view();
            Report report(&Session::database());
            QCOMPARE(report.open(view.row.printTemplate, view.selectionFormula(*m_crib->node(key))), 0);
            const auto tools = m_crib->keys().filter(QRegularExpression("^(r|co|j)"));
            QCOMPARE(report.recordCount(), key == QString("l4") ? 3 : tools.size());
        }
    }

    // The suite, or a program that was cut off, may have written any of these.
    void recordsThatFitNowhereHideNoOther()
    {
        m_crib->damage({"INSERT INTO Types (ID,Description,Parent) VALUES(40000,'Far',1)",
                        "UPDATE CheckOutIn SET Active=0 WHERE Tool_Id=2",
                        "INSERT INTO Scrap (Description,JobOrOH,LineItemTypeId) VALUES('Stray',7,6)"});
        ScriptedUser user(QMessageBox::Ok);
        explorer().rebuildView();
        QTRY_COMPARE(user.texts(),
                     QStringList("The types numbered 40000 cannot be shown: the tree holds numbers up to 32767."));
        m_crib->go("l1");
        QCOMPARE(m_crib->listLines().last(), "co2|1|Open wrench 13||..\\Wrenches|..\\Cabinet B||");
        m_crib->view(2);
        m_crib->go("l1");
        QCOMPARE(m_crib->listLines(),
                 QStringList("co2|1|Open wrench 13||nobody on record||..\\Wrenches|..\\Cabinet B"));
        user.answers(QMessageBox::Ok);
        m_crib->view(3);
        QCOMPARE(user.texts().last(), "Element not found");
        m_crib->go("l5");
        QCOMPARE(m_crib->keys(), QStringList("l11"));
    }

    void popUps()
    {
        const std::tuple<int, const char *, const char *, const char *> places[] = {
            {0, "l1", "", "mnuTreePopType"},
            {1, "l1", "", "mnuTreePopLoc"},
            {3, "l4", "", "mnuTreePopScrap"},
            {2, "l1", "", ""},
            {0, "l1", "r1", "mnuTreePopTool"},
            {0, "l1", "co2", "mnuListCheckIn"},
            {0, "l1", "t2", ""},
            {2, "l2", "co3", "mnuListCheckIn"},
            {2, "x0", "co2", ""}, // a folder for a description, keyed like a tool
            {3, "C900", "j16386", "mnuListPopScrap"},
        };
        for (const auto &[option, node, item, menu] : places) {
            m_crib->goTo(option, node);
            m_crib->frame.popUps.clear();
            const bool onTree = QString(item).isEmpty();
            QAbstractItemView *pane = onTree ? static_cast<QAbstractItemView *>(m_crib->tree()) : m_crib->list();
            const KeyedList &items = m_crib->list()->items();
            const QModelIndex place = onTree ? pane->currentIndex() : items.index(items.find(item), 0);
            QTest::mouseClick(pane->viewport(), Qt::RightButton, {}, pane->visualRect(place).center());
            QVERIFY2(m_crib->frame.popUps.join("") == menu, item);
            QCOMPARE(explorer().TreeHasFocus, onTree);
        }
    }

    void doubleClickFollows()
    {
        const std::tuple<int, const char *, const char *, const char *> ways[] = {
            {0, "x0", "t1", "l1"}, {1, "l1", "l3", "l3"},     {2, "x0", "co2", "l2"},
            {3, "x0", "s5", "l5"}, {3, "l4", "l900", "C900"}, {0, "l1", "r1", "l1"}, // a tool leads nowhere
        };
        for (const auto &[option, from, item, to] : ways) {
            m_crib->goTo(option, from, item);
            emit m_crib->list()->itemOpened();
            QCOMPARE(m_crib->tree()->selectedNode()->key, to);
        }
    }

    void moves_data()
    {
        // Type and location of tool 1, parent of type 2
        const QString asBefore = "1|1|1";
        const QString refusal = "A node can't be made a child of its own children.";
        row("tool and folder together", 0, "l1", "r1 t2", "l3", "Move the items to Drills?", "3|1|3");
        row("a tool to another location", 1, "l1", "r1", "l2", "Move the items to Cabinet B?", "1|2|1");
        row("No moves nothing", 0, "l1", "r1", "l4", "Move the items to \u00c4xte?", asBefore);
        row("a tool that is out stays", 0, "l1", "co2", "l3", "You must Check In the tool before moving.", asBefore);
        row("one that is out holds the others back", 0, "l1", "co2 r1", "l3",
            "You must Check In the tool before moving.", asBefore);
        row("a folder onto itself", 0, "x0", "t1", "l1", "", asBefore);
        row("a folder below itself", 0, "x0", "t1", "l2", refusal, asBefore);
        row("a node under another one", 0, "l2", "", "l3", "Move the items to Drills?", "1|1|3");
        row("a node to the top", 0, "l2", "", "x0", "Move the items to Tools?", "1|1|0");
        row("a node below itself", 0, "l1", "", "l2", refusal, asBefore);
        row("a node onto its own parent", 0, "l2", "", "l1", "", asBefore);
        row("where it is", 0, "l1", "r1", "l1", "", asBefore);
    }

    void moves()
    {
        const auto [option, from, items, to, message, after] =
            fetched<int, QString, QString, QString, QString, QString>();
        m_crib->goTo(option, from, items);
        m_crib->list()->DragArmed = !items.isEmpty();
        const bool agrees = to != "l4";
        ScriptedUser user(agrees ? QMessageBox::Yes : QMessageBox::No, !message.isEmpty());
        if (items.isEmpty()) {
            m_crib->tree()->setDropHighlight(m_crib->node(to));
            emit m_crib->tree()->nodeDropped(m_crib->node(from));
        } else {
            dropItemsOn(to);
        }

        QCOMPARE(user.texts().join('\n'), message);
        const QStringList left = m_crib->rows("SELECT Type,Location FROM Tools WHERE ID=1")
            + m_crib->rows("SELECT Parent FROM Types WHERE ID=2");
        QCOMPARE(left.join('|'), after);
        const bool moved = message.startsWith("Move") && agrees;
        if (!items.isEmpty())
            QCOMPARE(m_crib->tree()->selectedNode()->key, moved ? to : from);
        if (moved && !items.contains("r1"))
            QCOMPARE(m_crib->node("l2")->parent, m_crib->node(to));
    }

    void foldersArePicked()
    {
        constexpr int enter = Qt::Key_Return;
        const std::tuple<const char *, QList<int>, const char *> ways[] = {
            {"type", {Qt::Key_Down, enter}, "Vorlane\\\u00c4xte 4"},
            {"type", {Qt::Key_W, Qt::Key_Right, Qt::Key_Right, enter}, "Vorlane\\Wrenches\\Torque wrenches 2"},
            {"location", {Qt::Key_C, Qt::Key_A, enter}, "Vorlane\\Cabinet A 1"},
            {"location", {Qt::Key_Down, Qt::Key_Escape}, ""},
            {"type", {enter, Qt::Key_Escape}, ""}, // the root is no folder
        };
        for (const auto &[mode, keys, path] : ways) {
            ScriptedUser user(QMessageBox::Ok, keys[0] == enter);
            whenModal<frmTreeSelect>([&](frmTreeSelect &form) {
                QCOMPARE(form.windowTitle(), mode == QString("type") ? "Tool Types" : "Tool Locations");
                QCOMPARE(form.ui.tvMain->currentIndex().data().toString(), "Vorlane");
                for (const int key : keys)
                    QTest::keyClick(form.ui.tvMain, Qt::Key(key));
            });
            const std::optional<PickedFolder> picked = frmTreeSelect::pick(mode, nullptr);
            QCOMPARE(picked ? picked->path + ' ' + QString::number(picked->id) : QString(), path);
            QCOMPARE(user.boxes(), QStringList(user.seen.size(), remark("You must select a Path!")));
        }
    }

    void movesByKey()
    {
        m_crib->goTo(0, "l1", "r1");
        whenModal<frmTreeSelect>([](frmTreeSelect &picker) {
            QTest::keyClick(picker.ui.tvMain, Qt::Key_D);
            QTest::keyClick(&picker, Qt::Key_Return);
        });
        ScriptedUser user(QMessageBox::Yes);
        explorer().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&explorer()));
        m_crib->list()->setFocus();
        QTest::keyClick(m_crib->list(), Qt::Key_M, Qt::ControlModifier);
        QCOMPARE(m_crib->tree()->dropHighlight(), nullptr);
        QCOMPARE(m_crib->rows("SELECT Type FROM Tools WHERE ID=1"), QStringList("3"));
    }

    void keyboardDecidesWhatCommandsActOn()
    {
        TreePane *tree = m_crib->tree();
        ListPane *list = m_crib->list();
        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_Down);
        QCOMPARE(explorer().ui.lblList->text(), "Contents of 'Tools\\\u00c4xte'");
        QVERIFY(explorer().TreeHasFocus);
        m_crib->go("l1");
        list->setFocus(Qt::TabFocusReason);
        list->selectRow(0);
        QTest::keyClick(list, Qt::Key_Down);
        explorer().ui.cmdEdit->setFocus(Qt::TabFocusReason);
        list->setFocus(Qt::ActiveWindowFocusReason); // back from a dialog
        QVERIFY(!explorer().TreeHasFocus);
        QTest::keyClick(list, Qt::Key_1, Qt::ControlModifier); // sorts by the first column, a click sorts the other way
        QCOMPARE(m_crib->keys(), QStringList({"r1", "co2", "t2"}));
        QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {}, {5, 5});
        QCOMPARE(m_crib->keys(), QStringList({"t2", "co2", "r1"}));
        m_crib->select("t2");
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(tree->selectedNode()->key, "l2");

        m_crib->go("x0");
        tree->setFocus(Qt::BacktabFocusReason);
        QVERIFY(tree->palette().highlight() != list->palette().highlight());
        ScriptedUser user(QMessageBox::Ok, 2);
        QTest::keyClick(tree, Qt::Key_Delete);
        // Alt+T stands on a view and on a menu of the frame, too.
        QTest::keyClick(list, Qt::Key_T, Qt::AltModifier);
        QCOMPARE(user.texts(),
                 QStringList({"You cannot delete the Tools node.", "Please select a tool to Check Out."}));
        QCOMPARE(explorer().TreeMode(), "type");
        m_crib->run({"INSERT INTO Types (Description,Parent) VALUES('Zangen',0)"});
        QTest::keyClick(tree, Qt::Key_F5);
        QCOMPARE(m_crib->treeLines(m_crib->node("x0")).last(), ".l6 Zangen");
    }

    void changesOfOthersMarkRefresh()
    {
        if (!ServerDatabase::isWanted())
            QSKIP("nobody tells of changes in a file");
        const QPushButton *refresh = explorer().ui.cmdRefresh;
        const QString usual = refresh->toolTip();
        m_crib->run({"UPDATE Tools SET PartNumber='own'"});
        QCoreApplication::processEvents();
        QCOMPARE(refresh->toolTip(), usual);
        const auto other = Workspace::first().openDatabase(m_crib->path());
        other->execute("UPDATE Tools SET PartNumber='theirs'");
        QTRY_VERIFY(refresh->toolTip() != usual);
        QVERIFY(!m_crib->listLines().join("").contains("theirs"));
        QTest::keyClick(explorer().ui.tvMain, Qt::Key_F5);
        QCOMPARE(refresh->toolTip(), usual);
    }

    void theStatusLineAsksAtRest()
    {
        m_crib->go("l1");
        const qint64 before = Session::database().counters().run;
        m_crib->list()->setFocus();
        for (int i = 0; i < 10; ++i)
            QTest::keyClick(m_crib->list(), Qt::Key_Down);
        QCOMPARE(Session::database().counters().run, before);
        const auto *status = explorer().window()->findChild<QStatusBar *>()->findChild<QLabel *>();
        QTRY_VERIFY2(status->text().contains("Miller"), qPrintable(status->text()));
        m_crib->run({"DELETE FROM CheckOutIn", "DELETE FROM Tools"});
        QTest::keyClick(m_crib->list(), Qt::Key_Up);
        QTRY_VERIFY2(status->text().contains("gone meanwhile"), qPrintable(status->text()));
    }

private:
    void dropItemsOn(const QString &key)
    {
        TreePane *tree = m_crib->tree();
        tree->expandAll();
        const QPoint place = tree->visualRect(tree->nodes().indexOf(m_crib->node(key))).center();
        QMimeData data;
        data.setData(ListPane::dragFormat, {});
        QDragEnterEvent enter(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent dropped(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        for (QDropEvent *event : {static_cast<QDropEvent *>(&enter), static_cast<QDropEvent *>(&move), &dropped}) {
            QCOMPARE(tree->dropHighlight(), event == &dropped ? m_crib->node(key) : nullptr);
            QApplication::sendEvent(tree->viewport(), event);
            QVERIFY(event->isAccepted());
        }
        QCOMPARE(tree->dropHighlight(), nullptr);
    }

    std::optional<CribExplorer> m_crib;
};

QTEST_MAIN(TestFrmTree)
#include "tst_frmtree.moc"
