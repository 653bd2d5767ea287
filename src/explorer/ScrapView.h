#pragma once

#include "explorer/View.h"

class Recordset;

/// The view of scrapped tools, grouped by kind of charge and by the job or overhead operation they were charged to.
class ScrapView : public View
{
public:
    ScrapView();

    QString buildTree(Panes &panes) const override;
    /// What was charged to a kind is read anew every time its node is opened.
    bool openNode(Panes &panes, Node *node) const override;
    void fillList(Panes &panes, const Node *node) const override;
    ItemId idOf(const Node &node) const override { return ItemId::of(node, ItemId::chargeKind); }
    ItemId idOf(const ListItem &item) const override { return ItemId::of(item, ItemId::charge); }
    /// A job and an operation may have one number, and so one key.
    Node *sameNode(KeyedTree &nodes, const Thing &before) const override;
    QString popUpOf(const Node &node) const override { return node.parent ? "mnuTreePopScrap" : QString(); }
    QString popUpOf(const ListItem &item) const override;
    Outcome remove(const Things &things, bool fromTree) const override;
    QString selectionFormula(const Node &node) const override;
    void find(clsTools &search, const QString &pattern) const override;

private:
};
