#pragma once

#include "start/CribMaker.h"
#include "ui_CribChooser.h"

/// Asks for the crib folder: one that is there, or one that is made here.
class CribChooser : public QDialog
{
    Q_OBJECT
public:
    /// `reason` stands above the choices: why the folder that was chosen last will not do. May be empty.
    CribChooser(const QString &reason, const QString &admin);

    /// What was chosen, once the window is accepted; the crib in it has been opened.
    QString folder() const;
    /// Where nothing can be written the user is told, and decides.
    static bool mayBeReadOnly(const QString &folder);

    Ui::CribChooser ui;

private:
    void showFields();
    void cmdFolder_Click();
    void cmdFile_Click();
    void cmdOK_Click();
    QString made();

    CribMaker m_maker;
};
