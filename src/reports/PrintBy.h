#pragma once

#include "ui_PrintBy.h"

/// What differs between the two dialogs that print scrapped tools.
struct PrintByKind {
    const char *name;
    const char *caption;
    const char *frame;
    const char *statement;
    const char *field;
    const char *windowTitle;
    const char *templateFile;
    const char *formula; ///< up to the number that follows
    const char *boxName; ///< for those who hear the window

    static const PrintByKind frmPrByJob;
    static const PrintByKind frmPrByEmp;
};

/// The dialogs that print the scrapped tools of one job or of one employee.
class PrintBy : public QDialog
{
    Q_OBJECT
public:
    /// Shows the dialog until it is closed; it closes itself when the report is up.
    static void showModal(const PrintByKind &kind);
    explicit PrintBy(const PrintByKind &kind);

    Ui::PrintBy ui;

private:
    void cmdOK_Click();

    const PrintByKind &m_kind;
};
