#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmSplash.h"

/// What is seen while the program starts: its name, version and how far it has come. Above all other windows.
class frmSplash : public QFrame, public SharedForm<frmSplash>
{
    Q_OBJECT
public:
    Ui::frmSplash ui;

private:
    friend class SharedForm<frmSplash>;
    frmSplash();
};
