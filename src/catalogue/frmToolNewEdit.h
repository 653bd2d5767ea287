#pragma once

#include "catalogue/EditedRecord.h"
#include "platform/engine/Recordset.h"

#include "ui_frmToolNewEdit.h"

/// The tool editor: adds tools, several equal ones at once, or changes the data of one. The type and the location of
/// a tool that exists are not changed here.
class frmToolNewEdit : public QDialog
{
    Q_OBJECT
public:
    /// Shows the editor until it is closed. In the mode "New" the location is preset when it was opened from the tree
    /// of locations, the type when it was opened from the tree of types; in any other the tool `toolId` is edited.
    /// @returns whether anything was saved.
    static bool Startup(const QString &mode, bool fromType, bool fromLocation, int toolId, int typeId, int locationId,
                        const QString &typeText, const QString &locationText);

    /// Whether the data may be saved; if not, says why.
    bool ValidData();
    /// Writes to the database and has the explorer list its node anew. False when it failed, which was said, or was
    /// cancelled: nothing was written then.
    bool SaveRecord();

    Ui::frmToolNewEdit ui;

private:
    frmToolNewEdit(const QString &mode, int toolId);
    void setType(int id, const QString &text);
    void setLocation(int id, const QString &text);
    void loadManufacturers();
    void loadTool();
    void focusFirstMissing();
    void addTools();
    AtomicChange changeTool();
    bool save();
    void cmdTreeType_Click();
    void cmdTreeLoc_Click();
    void cboMan_Change(const QString &text);
    void cmdOK_Click();
    void cmdOKNew_Click();

    bool m_isNew;
    int m_toolId;
    EditedRecord m_tool{"SELECT * FROM tools WHERE ID=", {"Manufacturer", "Partnumber", "Description", "PricePer"}};
    bool m_saved = false;
};
