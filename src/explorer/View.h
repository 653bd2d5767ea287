#pragma once

#include "common/ItemId.h"
#include "platform/gui/MsgBox.h"
#include "platform/system/Progress.h"

#include <array>
#include <optional>

class Panes;
class clsTools;
struct QueryKind;

/// One of the things that a command acts on, and what it lies in.
struct Thing {
    ItemId id;
    QString text;
    ItemId parent;
};

/// One view of the explorer: what its tree and its list show, what may be done there and what is said otherwise. A view
/// has no state of its own; the panes that it fills have.
class View
{
public:
    using Node = KeyedTree::Node;
    using Things = std::vector<Thing>;

    enum class Command { create, edit, remove, move };
    /// What came of a command. After `stale` the panes are behind what others have written.
    enum class Outcome { declined, done, stale };

    /// What the command says instead when one of these kinds is among what it should act on; without kinds, always.
    /// Earlier rows come first.
    struct RefusalRow {
        Command command;
        std::vector<ItemId::Kind> kinds;
        const char *text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
    };
    struct Row {
        const char *mode; ///< how the rest of the program calls the view
        const char *title; ///< over the tree
        int headingLength; ///< characters of a path over the list; -1 for all
        std::vector<ListColumn> columns;
        std::vector<ListColumn> findColumns; ///< of the find dialog, which also tells where a hit was found
        const char *emptyHint; ///< stands in the panes while there is nothing to show
        const QueryKind &query; ///< the form that selects what the view shows
        const char *printTemplate; ///< that prints what the list shows
        QStringList tables; ///< that tree and list are read from
        std::vector<RefusalRow> refusals;
    };

    /// The four views, in the order of the window's options.
    static const std::array<const View *, 4> &all();

    explicit View(Row row) : row(std::move(row)) { }
    virtual ~View() = default;
    Q_DISABLE_COPY_MOVE(View)

    const Row row;
    QString mode() const { return row.mode; }

    /// Builds the tree from Panes::begin() on. @returns a remark on what cannot be shown; mostly empty.
    /// @throws EngineError or KeyError; what was added so far stands then.
    virtual QString buildTree(Panes &panes) const = 0;
    /// The node is opened. @returns whether what lies below it was read anew.
    virtual bool openNode(Panes &, Node *) const { return false; }
    /// Adds what the node holds to the list. @throws EngineError
    virtual void fillList(Panes &panes, const Node *node) const = 0;

    virtual ItemId idOf(const Node &node) const = 0;
    virtual ItemId idOf(const ListItem &item) const = 0;
    /// The tree node of a folder of the list; null when it has none.
    virtual Node *nodeOf(KeyedTree &nodes, const ListItem &folder) const;
    /// The node of a thing that stood in the tree before it was built anew; null when it is gone.
    virtual Node *sameNode(KeyedTree &nodes, const Thing &before) const;

    /// Names of the frame's pop-up menus; empty for none.
    virtual QString popUpOf(const Node &) const { return {}; }
    virtual QString popUpOf(const ListItem &item) const = 0;

    /// Why the command cannot act on these things, as far as their kinds tell.
    std::optional<MsgBoxCall> refusal(Command command, const Things &things) const;
    /// Asks whether to delete the things, and does so.
    virtual Outcome remove(const Things &things, bool fromTree) const = 0;

    /// Things can be moved from folder to folder, by drag and drop or by keys.
    virtual bool hasMoves() const { return false; }
    /// Asks whether to move the things to the folder, and does so.
    virtual Outcome move(const Things &, const Thing &, bool) const { return Outcome::declined; }

    /// The report's selection of what the node's list shows.
    virtual QString selectionFormula(const Node &node) const = 0;

    /// Reports to `search` what is described like `pattern`, a quoted text with its wildcards.
    virtual void find(clsTools &search, const QString &pattern) const = 0;

protected:
    /// Deletes `count` things under a bar that can stop it. @returns false, having said so, after that.
    static bool deletedUnderBar(size_t count, const std::function<void(const Progress &)> &deletion);
    // What is asked before tools are deleted
    static const QString oneTool, severalThings;
};
