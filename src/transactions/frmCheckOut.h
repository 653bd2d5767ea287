#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmCheckOut.h"

/// " Tool Checkout": lends the tool selected in the explorer to an employee, for a job or an overhead operation.
class frmCheckOut : public QDialog, public SharedForm<frmCheckOut>
{
    Q_OBJECT
public:
    /// Stores the loan and shows the tool as out. False when something was not chosen or nothing could be stored, which
    /// has been said then.
    bool SaveCheckOut();

    Ui::frmCheckOut ui;

private:
    friend class SharedForm<frmCheckOut>;
    frmCheckOut();
    void cmdOK_Click();
};
