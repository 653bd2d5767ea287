#pragma once

#include "common/ExplorerWindow.h"
#include "platform/gui/KeyedTree.h"

#include "ui_frmTreeSelect.h"

/// The tree picker: shows the types or the locations and lets the user pick one folder. A branch is read when it is
/// expanded for the first time.
class frmTreeSelect : public QDialog
{
    Q_OBJECT
public:
    /// Whether the top of the tree counts as a folder: a folder can lie there, a tool cannot.
    enum class Root { Refused, Allowed };

    /// `mode` is "type" or "location".
    frmTreeSelect(const QString &mode, QWidget *parent, Root root = Root::Refused);

    /// Shows the picker until it is closed; nothing when the user cancels. The root's id is 0.
    static std::optional<PickedFolder> pick(const QString &mode, QWidget *parent, Root root = Root::Refused);

    Ui::frmTreeSelect ui;

private:
    struct Kind {
        const char *title;
        const char *keyPrefix;
        const char *foldersOf; ///< statement; takes the parent's number
        const char *anyBelow; ///< with any number in the parent's place
    };
    static const Kind types, locations;

    void addFolders(KeyedTree::Node *parent);
    void tvMain_Expand(const QModelIndex &index);
    void cmdOK_Click();

    const Kind &m_kind;
    const Root m_root;
    KeyedTree m_tree;
};
