#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmScrapRestore.h"

/// "Restore Tool": brings the scrapped tool selected in the explorer back into the catalogue under its old number,
/// with its type, location and data as corrected here.
class frmScrapRestore : public QDialog, public SharedForm<frmScrapRestore>
{
    Q_OBJECT
public:
    /// Stores the tool and deletes its scrap record. @returns what went wrong; empty on success.
    QString RestoreTool();

    Ui::frmScrapRestore ui;

private:
    friend class SharedForm<frmScrapRestore>;
    frmScrapRestore();
    void cmdTreeType_Click();
    void cmdTreeLoc_Click();
    void cmdRestore_Click();
    void txtCost_LostFocus();
    bool eventFilter(QObject *watched, QEvent *event) override;

    QString m_scrapId;
    double m_price = 0;
    qint64 m_typeId = 0;
    qint64 m_locationId = 0;
};
