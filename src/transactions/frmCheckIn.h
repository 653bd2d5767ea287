#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmCheckIn.h"

/// "Tool Check In": takes back the tool selected in the explorer and shows who has it.
class frmCheckIn : public QDialog, public SharedForm<frmCheckIn>
{
    Q_OBJECT
public:
    Ui::frmCheckIn ui;

private:
    friend class SharedForm<frmCheckIn>;
    frmCheckIn();
    void cmdOk_Click();

    qint16 m_toolId = 0;
    qint64 m_loanShown = 0;
};
