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
class ExplorerView
{
public:
    virtual ~ExplorerView() = default;

    /// "type", "location", "checkedOut" or "scrap"; empty before the first tree is built.
    virtual QString TreeMode() const = 0;

    /// The item of the tool list that commands act on; null when none is selected.
    virtual const ListItem *selectedItem() const = 0;
    virtual void patchSelectedItem(const ListItem &item) = 0;
    /// Takes the item out of the list; the next one is selected then, or the last.
    virtual void removeSelectedItem() = 0;
    virtual int itemCount() const = 0;
    virtual void selectFirstItem() = 0;
    virtual void focusList() = 0;
    /// Fills the list anew for the selected tree node.
    virtual void listSelectedNode() = 0;

    /// Builds the current view's tree anew.
    virtual void rebuildView() = 0;
    /// Adds a node for the new type or location `id` under the selected node.
    virtual void addChildNode(int id, const QString &text) = 0;
    /// Gives the selected node another text, and the heading over the list with it.
    virtual void renameSelectedNode(const QString &text) = 0;

    /// Lets the user pick a folder of the tree "type" or "location"; nothing when he cancels.
    virtual std::optional<PickedFolder> pickFolder(const QString &mode, QWidget *parent) = 0;
};

/// The open explorer. Dialogs that act on its selection are reached only while there is one.
ExplorerView &theExplorer();
void setTheExplorer(ExplorerView *explorer);
