#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmScrap.h"

/// "Scrap Tool": takes the tool selected in the explorer out of the catalogue and keeps who scrapped it, for which
/// job or overhead operation and why.
class frmScrap : public QDialog, public SharedForm<frmScrap>
{
    Q_OBJECT
public:
    Ui::frmScrap ui;

    void reject() override;

private:
    friend class SharedForm<frmScrap>;
    frmScrap();
    void GetCheckedOutInfo(qint16 toolId);
    void cmdOK_Click();
    /// Enters the tool among the scrapped ones and deletes it; a step of a change.
    void scrapTool();

    qint16 m_toolId = 0;
    bool m_isOut = false;
    qint64 m_loanShown = 0; ///< the loan that the boxes were filled from
    bool m_wasReturned = false; ///< the loan was ended here
};
