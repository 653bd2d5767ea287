#pragma once

#include "explorer/View.h"
#include "explorer/clsTools.h"

/// The two views of stored trees: tool types and storage locations.
class FolderView : public View
{
public:
    /// What tells one from the other.
    struct Names {
        clsTools::Kind kind;
        const char *plural; ///< the table
        const char *itemPrefix; ///< of a sub-folder's key in the list
        const char *popUp;
        const char *count;
        const char *descriptionOf; ///< of one folder; any number in place of its own
        const char *childrenOf; ///< likewise
        const char *subFolders;
        const char *ofFolder; ///< condition of a folder's tools
        const char *printed; ///< the report's field of a tool's folder
    };
    static const Names types, locations;

    explicit FolderView(const Names &names);

    QString buildTree(Panes &panes) const override;
    void fillList(Panes &panes, const Node *node) const override;
    ItemId idOf(const Node &node) const override { return ItemId::of(node, ItemId::folder); }
    ItemId idOf(const ListItem &item) const override { return ItemId::of(item); }
    QString popUpOf(const Node &) const override { return m_names.popUp; }
    QString popUpOf(const ListItem &item) const override;
    Outcome remove(const Things &things, bool fromTree) const override;
    bool hasMoves() const override { return true; }
    Outcome move(const Things &things, const Thing &target, bool fromTree) const override;
    QString selectionFormula(const Node &node) const override;
    void find(clsTools &search, const QString &pattern) const override;

private:
    struct Build;
    void addFolder(Build &build, Node *parent, qint16 id) const;

    const Names &m_names;
};
