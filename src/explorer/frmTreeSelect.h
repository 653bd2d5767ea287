#pragma once

#include "common/ExplorerView.h"
#include "platform/gui/KeyedTree.h"

#include "ui_frmTreeSelect.h"

/// The tree picker: shows the types or the locations and lets the user pick one folder. A branch is read when it is
/// expanded for the first time.
class frmTreeSelect : public QDialog
{
    Q_OBJECT
public:
    /// `mode` is "type" or "location".
    frmTreeSelect(const QString &mode, QWidget *parent);

    /// Shows the picker until it is closed; nothing when the user cancels.
    static std::optional<PickedFolder> pick(const QString &mode, QWidget *parent);

    Ui::frmTreeSelect ui;

private:
    void initTreetype();
    void initTreeLocation();
    void initTree();
    void addFolders(KeyedTree::Node *parent);
    void tvMain_Expand(const QModelIndex &index);
    void cmdOK_Click();

    KeyedTree m_tree;
    QString m_keyPrefix;
    QString m_foldersOf; ///< statement; takes the parent's number
    QString m_anyBelow; ///< likewise
};
