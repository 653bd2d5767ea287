#pragma once

#include "catalogue/EditedRecord.h"
#include "catalogue/FolderKind.h"

#include "ui_FolderEditor.h"

/// The editors of storage locations and tool types, `frmLocationNewEdit` and `frmTypeNewEdit`: add a folder below
/// another one, or rename one. What is saved shows in the explorer's tree at once.
class FolderEditor : public QDialog
{
    Q_OBJECT
public:
    /// Shows the editor until it is closed. In the mode "New" it adds folders below the folder `parentId`, 0 for the
    /// tree's root, which the caption calls `parentText`; in any other it renames the folder `id`.
    /// @returns whether anything was saved.
    static bool Startup(const FolderKind &kind, const QString &mode, int id, const QString &parentText, int parentId);

    /// Whether the text may be saved; if not, says why. Names are unique over the whole table. Only a new folder must
    /// differ from all: a rename onto the name of one other folder passes, as the suite has it.
    bool ValidData();
    /// Writes the folder. False when others were faster or the database refused, which was said.
    bool SaveRecord();

    Ui::FolderEditor ui;

private:
    FolderEditor(const FolderKind &kind, const QString &mode, int id, const QString &parentText, int parentId);
    bool isTaken(const QString &name) const;
    bool save() { return ValidData() && SaveRecord(); }
    void cmdOK_Click();
    void cmdOKNew_Click();

    const FolderKind &m_kind;
    bool m_isNew;
    int m_id;
    int m_parentId;
    EditedRecord m_folder;
    bool m_saved = false;
};
