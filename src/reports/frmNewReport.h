#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmNewReport.h"

/// "Select Report to Import ...": the report templates that lie in the program's folder. It closes when the chosen one
/// has been imported.
class frmNewReport : public QDialog, public SharedForm<frmNewReport>
{
    Q_OBJECT
public:
    Ui::frmNewReport ui;

private:
    friend class SharedForm<frmNewReport>;
    frmNewReport();
    void cmdSelect_Click();
};
