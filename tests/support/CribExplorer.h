#pragma once

#include "common/ProgramState.h"
#include "explorer/frmTree.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/FakeFrame.h"
#include "tests/support/ScriptedUser.h"

inline frmTree &explorer() { return frmTree::instance(); }

/// The explorer's window as the user works it. Views are numbered as their buttons: 0 types, 1 locations, 2 checked
/// out, 3 scrapped.
class ExplorerUser
{
public:
    void view(int option) { explorer().findChild<QRadioButton *>(QStringLiteral("optMode%1").arg(option))->click(); }
    TreePane *tree() const { return explorer().ui.tvMain; }
    ListPane *list() const { return explorer().ui.lstToolList; }
    KeyedTree::Node *node(const QString &key) const { return tree()->nodes().find(key); }
    void go(const QString &key)
    {
        tree()->selectNode(node(key));
        emit tree()->nodeClicked(node(key));
    }
    /// Selects items of the list: "r1 t2".
    void select(const QString &keys)
    {
        list()->clearSelection();
        for (const QString &key : keys.split(' ', Qt::SkipEmptyParts))
            list()->selectionModel()->setCurrentIndex(list()->items().index(list()->items().find(key), 0),
                                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    /// Goes to a node of a view and selects items of its list; without items the tree is what commands act on.
    void goTo(int option, const QString &key, const QString &items = {})
    {
        view(option);
        tree()->expandAll();
        go(key);
        select(items);
        explorer().TreeHasFocus = items.isEmpty();
    }
};

/// The explorer's window on a crib.
class CribExplorer : public CribDatabase, public ExplorerUser
{
public:
    CribExplorer() { Q_INIT_RESOURCE(icons); }
    ~CribExplorer() { frmTree::unload(); }

    /// Key and text of a node and of all below it, one dot for each level.
    QStringList treeLines(const KeyedTree::Node *node, int depth = 0) const
    {
        QStringList lines(QString(depth, '.') + node->key + ' ' + node->text);
        for (const auto &child : node->children)
            lines += treeLines(child.get(), depth + 1);
        return lines;
    }
    /// Key, icon, text and columns of all items.
    QStringList listLines() const
    {
        QStringList lines;
        for (int row = 0; row < list()->items().count(); ++row) {
            const ListItem &item = list()->items().item(row);
            lines.append((QStringList{item.key, QString::number(item.icon), item.text} + item.subItems).join('|'));
        }
        return lines;
    }
    QStringList keys() const { return listLines().replaceInStrings(QRegularExpression("\\|.*"), {}); }

    FakeFrame frame;
};
