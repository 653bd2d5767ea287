#pragma once

#include "start/CribFolder.h"
#include "start/CribMaker.h"
#include "ui_CribChooser.h"

/// Asks for the crib folder: one that is there, or one that is made here.
class CribChooser : public QDialog
{
    Q_OBJECT
public:
    /// `last` is offered first, and why it will not do stands above the choices: a share may be connected meanwhile.
    CribChooser(const CribFolder::Found &last, const QString &admin);

    /// What was chosen, once the window is accepted; the crib in it has been opened.
    QString folder() const;
    /// Where nothing can be written the user is told, and decides.
    static bool mayBeReadOnly(const QString &folder);

    Ui::CribChooser ui;

private:
    void showFields();
    void showPassword();
    void cmdFolder_Click();
    void cmdFile_Click();
    void cmdOK_Click();
    QString made();
    QString movedIn();
    static bool mayBeMended(const QString &fault);

    QString m_lastFolder;
    CribMaker m_maker;
};
