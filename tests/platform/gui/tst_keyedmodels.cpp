#include "platform/gui/KeyedList.h"
#include "platform/gui/KeyedTree.h"

#include <QAbstractItemModelTester>
#include <QTest>

/// The models behind trees and lists.
class TestKeyedModels : public QObject
{
    Q_OBJECT

private slots:
    void treeKeepsOrderKeysAndPaths()
    {
        KeyedTree tree;
        const QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const auto texts = [](const KeyedTree::Node *node) {
            QString all;
            for (const auto &child : node->children)
                all += QString::number(child->row) + child->text + ' ';
            return all;
        };
        KeyedTree::Node *root = tree.add(nullptr, "x0", "Tools", {});
        root->sorted = true;
        for (const char *text : {"saw", "Drill", "\u00c4xte", "axle", "drill"})
            tree.add(root, QStringLiteral("l%1").arg(root->children.size()), text, {});
        QCOMPARE(texts(root), "0axle 1\u00c4xte 2Drill 3drill 4saw ");
        KeyedTree::Node *drill = tree.find("l1"), *saw = tree.find("l0");
        tree.add(drill, "l7", "below", {});
        tree.add(saw, "l8", "Z", {});
        QVERIFY_EXCEPTION_THROWN(tree.add(saw, "l7", "Other", {}), KeyError);
        tree.move(drill, saw);
        QCOMPARE(texts(root), "0axle 1\u00c4xte 2drill 3saw ");
        QCOMPARE(texts(saw), "0Drill 1Z ");
        QCOMPARE(KeyedTree::fullPath(tree.find("l7")), "Tools\\saw\\Drill\\below");
        tree.remove(tree.find("l3"));
        QCOMPARE(saw->row, 2);
        tree.removeChildren(saw);
        tree.add(root, "l7", "Free again", {});
        {
            // Painting in the middle of a fill must not reach nodes that are gone.
            const KeyedTree::Filling filling(tree);
            tree.clear();
            tree.add(nullptr, "x0", "Tools", {});
            QCOMPARE(tree.rowCount(), 0);
        }
        QCOMPARE(tree.rowCount(), 1);
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
            QCOMPARE(list.rowCount(), 0);
        }
        QCOMPARE(keys(), "ed"); // sorting stays on
    }
};

QTEST_MAIN(TestKeyedModels)
#include "tst_keyedmodels.moc"
