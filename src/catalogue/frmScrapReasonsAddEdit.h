#pragma once

#include "catalogue/EditedRecord.h"
#include "ui_frmScrapReasonsAddEdit.h"

#include <QMessageBox>

/// Adds scrap reasons or gives one other words. No two reasons may be alike.
class frmScrapReasonsAddEdit : public QDialog
{
    Q_OBJECT
public:
    /// Shows the editor until it is closed: in the mode "New" for new reasons, in any other for the reason `id`.
    /// @returns whether anything was saved.
    static bool Startup(const QString &mode, int id);

    Ui::frmScrapReasonsAddEdit ui;

private:
    frmScrapReasonsAddEdit(const QString &mode, int id);
    void loadReason();
    QString problemWith(const QString &text) const;
    bool ValidData();
    bool SaveRecord();
    bool save() { return ValidData() && SaveRecord(); }
    void say(const QString &problem, QMessageBox::Icon icon);
    void cmdOK_Click();
    void cmdOKNew_Click();

    bool m_isNew;
    QString m_id;
    EditedRecord m_reason{"SELECT * FROM ScrapReasons WHERE id =", {"Description"}};
    bool m_saved = false;
};
