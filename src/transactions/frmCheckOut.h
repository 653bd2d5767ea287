#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmCheckOut.h"

/// " Tool Checkout": lends the tool selected in the explorer to an employee, for a job or an overhead operation.
class frmCheckOut : public QDialog, public SharedForm<frmCheckOut>
{
    Q_OBJECT
public:
    /// Stores the loan and shows the tool as out. False when something was not chosen, which has been said then.
    /// @throws EngineError when the loan cannot be stored; the tool may be flagged as out by then.
    bool SaveCheckOut();

    Ui::frmCheckOut ui;

private:
    friend class SharedForm<frmCheckOut>;
    frmCheckOut();
    void cmdOK_Click();
};
