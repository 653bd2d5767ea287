#pragma once

#include "platform/gui/KeyedList.h"

#include <QtGlobal>

#include <optional>

class QWidget;

/// A folder of the type or location tree that the user has picked.
struct PickedFolder {
    int id;
    QString path; ///< the descriptions from the tree's root down, separated by "\"
};

/// What dialogs may ask of the tool explorer and change in it; the explorer's window implements it. Dialogs patch
/// what they changed instead of having lists and trees read anew.
class ExplorerWindow
{
public:
    virtual ~ExplorerWindow() = default;

    /// The last click was on a tree node, not in the tool list: commands act on the node.
    bool TreeHasFocus = false;

    /// "type", "location", "checkedOut" or "scrap"; empty before the first tree is built.
    virtual QString TreeMode() const = 0;

    /// The item of the tool list that commands act on; null when none is selected.
    virtual const ListItem *selectedItem() const = 0;
    virtual void patchSelectedItem(const ListItem &item) = 0;
    /// Takes the item out of the list; the next one is selected then, or the last.
    virtual void removeSelectedItem() = 0;
    /// Of several selected items only the one that commands act on stays selected, so that the user sees which. What
    /// acts on one item does so when it opens.
    virtual void narrowSelection() = 0;
    virtual int itemCount() const = 0;
    virtual void selectFirstItem() = 0;
    virtual void focusList() = 0;
    /// Reads what the list shows anew; the same items stay selected.
    virtual void listSelectedNode() = 0;

    /// Builds the current view's tree anew.
    virtual void rebuildView() = 0;
    /// Adds a node for the new folder `id` of the tree `mode`, "type" or "location", under its parent; 0 is the root.
    /// Nothing happens while another tree is shown.
    virtual void addChildNode(const QString &mode, int parentId, int id, const QString &text) = 0;
    /// Gives the node of a folder another text, and the heading over the list with it. The folder need not be the
    /// selected node: folders are edited from the tool list and from the list windows, too.
    virtual void renameNode(const QString &mode, int id, const QString &text) = 0;

    /// Lets the user pick a folder of the tree "type" or "location"; nothing when he cancels.
    virtual std::optional<PickedFolder> pickFolder(const QString &mode, QWidget *parent) = 0;
};

/// The open explorer. Dialogs that act on its selection are reached only while there is one.
ExplorerWindow &theExplorer();
/// Null while the explorer is closed; for windows that are reached from the main menu as well.
ExplorerWindow *explorerIfOpen();
void setTheExplorer(ExplorerWindow *explorer);
