#pragma once

#include "catalogue/FolderKind.h"
#include "platform/engine/Recordset.h"

#include "ui_SpareFolderList.h"

/// The list windows of storage locations and tool types, `frmLocation` and `frmType`: all folders of a tree by name. No
/// menu opens them; folders are edited in the explorer.
class SpareFolderList : public QDialog
{
    Q_OBJECT
public:
    /// Shows the window until it is closed.
    static void showModal(const FolderKind &kind);
    ~SpareFolderList() override;

    /// The window of locations, or of types, is open.
    static inline bool LocationListOpen = false;
    static inline bool TypeListOpen = false;

    Ui::SpareFolderList ui;

private:
    explicit SpareFolderList(const FolderKind &kind);
    void load();
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();

    const FolderKind &m_kind;
    Recordset m_folders; ///< row for row what the list shows
};
