#include "platform/gui/ColumnWidths.h"
#include "platform/gui/KeyedList.h"
#include "platform/gui/KeyedTree.h"

#include <QAbstractItemModelTester>
#include <QTest>
#include <QTreeView>

static QStringList childTexts(const KeyedTree::Node *node)
{
    QStringList texts;
    for (const auto &child : node->children)
        texts.append(child->text);
    return texts;
}

/// The models behind trees and lists.
class TestKeyedModels : public QObject
{
    Q_OBJECT

private slots:
    void treeKeepsKeysUniqueAndPathsWhole()
    {
        KeyedTree tree;
        const QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::QtTest);
        KeyedTree::Node *root = tree.add(nullptr, "x0", "Tools", {});
        KeyedTree::Node *drills = tree.add(root, "l1", "Drills", {});
        KeyedTree::Node *jobber = tree.add(drills, "l2", "Jobber", {});

        QVERIFY_EXCEPTION_THROWN(tree.add(root, "l2", "Other", {}), KeyError);
        QCOMPARE(KeyedTree::fullPath(jobber), "Tools\\Drills\\Jobber");
        QVERIFY(KeyedTree::isWithin(jobber, drills));
        QVERIFY(!KeyedTree::isWithin(drills, jobber));
        tree.removeChildren(drills);
        QCOMPARE(tree.find("l2"), nullptr);
        tree.add(root, "l2", "Free again", {});
        QCOMPARE(childTexts(root), QStringList({"Drills", "Free again"}));
    }

    void keysDoNothingInEmptyViews()
    {
        KeyedTree tree;
        KeyedList list([](int) { return ItemPicture(); });
        list.setColumns({{"Description", 2000}});
        for (QAbstractItemModel *model : std::initializer_list<QAbstractItemModel *>{&tree, &list}) {
            QTreeView view;
            view.setModel(model);
            for (const auto key : {QKeySequence::Copy, QKeySequence::SelectAll, QKeySequence::MoveToNextLine,
                                   QKeySequence::MoveToEndOfDocument})
                QTest::keySequence(&view, key);
            for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Right, Qt::Key_Asterisk, Qt::Key_A})
                QTest::keyClick(&view, key);
            QVERIFY(!view.currentIndex().isValid());
        }
    }

    void sortedNodesTakeChildrenInTheirPlace()
    {
        KeyedTree tree;
        const QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::QtTest);
        KeyedTree::Node *root = tree.add(nullptr, "x0", "Tools", {});
        root->sorted = true;
        for (const char *text : {"saw", "Drill", "\u00c4xte", "axle", "drill"})
            tree.add(root, QStringLiteral("l%1").arg(root->children.size()), text, {});
        QCOMPARE(childTexts(root), QStringList({"axle", "\u00c4xte", "Drill", "drill", "saw"}));
        for (int row = 0; row < 5; ++row)
            QCOMPARE(root->children[size_t(row)]->row, row);
    }

    void movedNodesKeepWhatLiesBelow()
    {
        KeyedTree tree;
        const QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::QtTest);
        KeyedTree::Node *root = tree.add(nullptr, "x0", "Tools", {});
        KeyedTree::Node *a = tree.add(root, "l1", "A", {});
        KeyedTree::Node *b = tree.add(root, "l2", "B", {});
        KeyedTree::Node *c = tree.add(root, "l3", "C", {});
        tree.add(a, "l4", "below A", {});
        tree.add(c, "l5", "Z", {});

        tree.move(a, c);
        QCOMPARE(childTexts(root), QStringList({"B", "C"}));
        QCOMPARE(childTexts(c), QStringList({"A", "Z"}));
        QCOMPARE(KeyedTree::fullPath(tree.find("l4")), "Tools\\C\\A\\below A");
        tree.remove(b);
        QCOMPARE(c->row, 0);
    }

    // Painting in the middle of a fill must not reach nodes that are gone.
    void aViewSeesNothingOfAFill()
    {
        KeyedTree tree;
        tree.add(nullptr, "x0", "Tools", {});
        KeyedList list({});
        list.setColumns({{"Description", 2000}});
        list.add({.key = "r1", .text = "Tap"});
        {
            const KeyedTree::Filling fillingTree(tree);
            const KeyedList::Filling fillingList(list);
            tree.clear();
            tree.add(nullptr, "x0", "Tools", {});
            list.add({.key = "r2", .text = "Die"});
            QCOMPARE(tree.rowCount(), 0);
            QCOMPARE(list.rowCount(), 0);
            QCOMPARE(list.count(), 2);
        }
        QCOMPARE(tree.rowCount(), 1);
        QCOMPARE(list.rowCount(), 2);
    }

    void oneDirectionServesAllHeadings()
    {
        KeyedList list({});
        const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.setColumns({{"Description", 2000}, {"Part Number", 1440}});
        const auto keys = [&] {
            QString all;
            for (int row = 0; row < list.count(); ++row)
                all += list.item(row).key;
            return all;
        };
        list.addAll({{.key = "a", .text = "tap", .subItems = {"3"}},
                     {.key = "b", .text = "Drill", .subItems = {"1"}},
                     {.key = "c", .text = "drill", .subItems = {"2"}}});
        const QPersistentModelIndex selected = list.index(0, 0);
        list.clickHeading(0);
        QCOMPARE(keys(), "bca");
        QCOMPARE(selected.row(), 2); // a selection follows its item
        list.clickHeading(0);
        QCOMPARE(keys(), "abc");
        list.clickHeading(0);
        list.clickHeading(1); // another column, the other direction all the same
        QCOMPARE(list.sortOrder(), Qt::DescendingOrder);
        QCOMPARE(keys(), "acb");
        {
            const KeyedList::Filling filling(list);
            list.clear();
            list.add({.key = "d", .text = "saw", .subItems = {"7"}});
            list.add({.key = "e", .text = "saw", .subItems = {"9"}});
        }
        QCOMPARE(keys(), "ed"); // sorting stays on
    }

    void spareWidthGoesToTheColumns()
    {
        KeyedList list([](int) { return ItemPicture{.meaning = "out"}; });
        list.setColumns({{"Description", 1500}, {"Part Number", 1500}});
        QTreeView view;
        view.setModel(&list);
        ColumnWidths widths(view, list);
        widths.reset();
        view.resize(120, 100);
        view.show();
        QCOMPARE(view.columnWidth(0), 100);
        view.resize(1000, 100);
        QCOMPARE(view.columnWidth(0), view.columnWidth(1));
        list.add({.key = "r1", .text = QString(50, 'm')});
        list.setColumns(list.columns());
        QVERIFY(view.columnWidth(0) > view.fontMetrics().horizontalAdvance(QString(50, 'm')));
        QVERIFY(view.columnWidth(0) + view.columnWidth(1) <= view.viewport()->width());
        view.setColumnWidth(1, 300); // the user's
        view.resize(1200, 100);
        QCOMPARE(view.columnWidth(1), 300);
        QCOMPARE(list.index(0, 0).data(Qt::AccessibleTextRole), QString(50, 'm') + ", out");
    }

    void columnsBeforeALaterOneStayEmpty()
    {
        ListItem item{.key = "co1", .text = "tap"};
        item.setSubItem(3, "21");
        item.setSubItem(2, "W-10");
        QCOMPARE(item.subItems, QStringList({"", "W-10", "21"}));
    }
};

QTEST_MAIN(TestKeyedModels)
#include "tst_keyedmodels.moc"
