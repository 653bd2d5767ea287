#pragma once

#include "platform/gui/SharedForm.h"
#include "ui_frmManual.h"

/// A plain reader of the manual, for desktops without a browser.
class frmManual : public QDialog, public SharedForm<frmManual>
{
    Q_OBJECT
public:
    /// Shows the page in front, also while a modal dialog is open; the reader goes with that dialog then.
    void showPage(const QUrl &page);

    Ui::frmManual ui;

private:
    friend class SharedForm<frmManual>;
    frmManual();
};
