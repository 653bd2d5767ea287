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

    qint16 m_returnedTool = 0; ///< whose loan was ended here; 0 for none
};
