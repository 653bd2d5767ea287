#pragma once

#include "explorer/View.h"

/// The view of tools that are out, grouped by what they are called.
class CheckedOutView : public View
{
public:
    CheckedOutView();

    QString buildTree(Panes &panes) const override;
    void fillList(Panes &panes, const Node *node) const override;
    ItemId idOf(const Node &node) const override { return ItemId::of(node, ItemId::description); }
    ItemId idOf(const ListItem &item) const override { return ItemId::of(item); }
    /// List and tree number descriptions apart: they are found by their text.
    Node *nodeOf(KeyedTree &nodes, const ListItem &folder) const override;
    Node *sameNode(KeyedTree &nodes, const Thing &before) const override;
    QString popUpOf(const ListItem &item) const override;
    Outcome remove(const Things &, bool) const override { return Outcome::declined; }
    QString selectionFormula(const Node &node) const override;
    void find(clsTools &search, const QString &pattern) const override;
};
