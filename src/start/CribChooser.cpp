#include "start/CribChooser.h"

#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"

#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

QString inDocuments(const QString &name)
{
    return QDir::toNativeSeparators(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + '/' + name);
}

QString pathIn(const QLineEdit *box)
{
    const QString text = box->text().trimmed();
    return text.isEmpty() ? QString()
                          : QDir::cleanPath(QDir::home().absoluteFilePath(QDir::fromNativeSeparators(text)));
}

}

CribChooser::CribChooser(const CribFolder::Found &last, const QString &admin)
    : m_lastFolder(QDir::toNativeSeparators(last.folder)), m_maker(admin, this)
{
    ui.setupUi(this);
    for (QRadioButton *option : findChildren<QRadioButton *>())
        onUserAction(option, &QRadioButton::toggled, this, &CribChooser::showFields);
    onUserAction(ui.cmdFolder, &QPushButton::clicked, this, &CribChooser::cmdFolder_Click);
    onUserAction(ui.cmdFile, &QPushButton::clicked, this, &CribChooser::cmdFile_Click);
    onUserAction(ui.txtFile, &QLineEdit::editingFinished, this, &CribChooser::showPassword);
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &CribChooser::cmdOK_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    showFields();
    ui.lblReason->setVisible(!last.fault.isEmpty());
    if (last.fault.isEmpty())
        return;
    ui.lblReason->setText(last.fault);
    // Layouts do not ask for the height of a text that wraps.
    ui.lblReason->setMinimumHeight(ui.lblReason->heightForWidth(sizeHint().width()));
}

QString CribChooser::folder() const { return pathIn(ui.txtFolder); }

void CribChooser::showFields()
{
    // What the user typed stays, whatever is chosen then.
    if (!ui.txtFolder->isModified())
        ui.txtFolder->setText(ui.optOpen->isChecked()         ? m_lastFolder
                                  : ui.optSample->isChecked() ? inDocuments("Sample crib")
                                                              : inDocuments("Tool crib"));
    ui.lblFolder->setText(ui.optOpen->isChecked() ? "&Folder of the crib" : "New &folder");
    const bool fromFile = ui.optMoveIn->isChecked() || ui.optServer->isChecked();
    const QString file = ui.optServer->isChecked() ? "Connection f&ile" : "Old f&ile";
    ui.lblFile->setText(file);
    ui.txtFile->setAccessibleName(QString(file).remove('&'));
    ui.lblFile->setEnabled(fromFile);
    ui.txtFile->setEnabled(fromFile);
    ui.cmdFile->setEnabled(fromFile);
    showPassword();
}

void CribChooser::showPassword()
{
    const bool isLocked = ui.optMoveIn->isChecked() && CribMaker::hasPassword(pathIn(ui.txtFile));
    ui.lblPassword->setVisible(isLocked);
    ui.txtPassword->setVisible(isLocked);
}

void CribChooser::cmdFolder_Click()
{
    const QString chosen = QFileDialog::getExistingDirectory(
        this, "Crib folder", folder().isEmpty() ? QDir::homePath() : QFileInfo(folder()).path());
    if (chosen.isEmpty())
        return;
    ui.txtFolder->setText(QDir::toNativeSeparators(chosen));
    ui.txtFolder->setModified(true);
}

void CribChooser::cmdFile_Click()
{
    const QString chosen =
        QFileDialog::getOpenFileName(this, QString(ui.lblFile->text()).remove('&'), QDir::homePath());
    if (chosen.isEmpty())
        return;
    ui.txtFile->setText(QDir::toNativeSeparators(chosen));
    showPassword();
}

void CribChooser::cmdOK_Click()
{
    if (folder().isEmpty() || (ui.txtFile->isEnabled() && pathIn(ui.txtFile).isEmpty())) {
        (folder().isEmpty() ? ui.txtFolder : ui.txtFile)->setFocus();
        inform(folder().isEmpty() ? "Say which folder." : "Say which file.");
        return;
    }
    showPassword();
    if (ui.txtPassword->isVisibleTo(this) && ui.txtPassword->text().isEmpty()) {
        ui.txtPassword->setFocus();
        inform("The old file has a password. Type it.");
        return;
    }
    const QString fault = ui.optOpen->isChecked() ? CribFolder::fault(folder()) : made();
    if (!fault.isEmpty())
        msgBox({.text = fault, .icon = QMessageBox::Critical});
    else if (mayBeReadOnly(folder()))
        accept();
}

QString CribChooser::made()
{
    if (ui.optSample->isChecked())
        return m_maker.makeSample(folder());
    if (ui.optEmpty->isChecked())
        return m_maker.makeEmpty(folder());
    if (ui.optServer->isChecked())
        return m_maker.connectTo(folder(), pathIn(ui.txtFile));
    return movedIn();
}

QString CribChooser::movedIn()
{
    CribMaker::OldFile old{.name = pathIn(ui.txtFile)};
    if (ui.txtPassword->isVisibleTo(this))
        old.password = ui.txtPassword->text();
    QString fault = m_maker.moveIn(folder(), old);
    if (CribMaker::isMendable(fault)) {
        if (!mayBeMended(fault))
            return "No crib was made.";
        old.mend = true;
        fault = m_maker.moveIn(folder(), old);
    }
    if (fault.isEmpty())
        inform("The old file is in the new crib, and both were compared. What came over is told in\n"
               + QDir::toNativeSeparators(folder() + '/' + CribMaker::reportName)
               + "\nCompare its figures with the old program.");
    return fault;
}

bool CribChooser::mayBeMended(const QString &fault)
{
    // A long list of tools would leave no room for the buttons.
    constexpr int longest = 400;
    // They stand behind the option's name.
    static const QRegularExpression beforeTools(R"(^.*\(--[^)]*\): )");
    const QString tools = QString(fault).remove(beforeTools);
    return msgBox({.text = "Some tools of the old file have a type or a location that does not exist. Add a folder "
                           "\"(missing ...)\" at the top for each, and move in?",
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No,
                   .detail = "Nothing else is changed; you can rename the folders afterwards.\n\nThese: "
                       + (tools.size() > longest ? tools.first(longest) + "..." : tools)})
        == QMessageBox::Yes;
}

bool CribChooser::mayBeReadOnly(const QString &folder)
{
    return !CribFolder::isReadOnly(folder)
        || msgBox({.text = "You may not write in the folder '" + folder
                       + "'. You can look at its crib, but lend nothing and change nothing. Open it?",
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No})
        == QMessageBox::Yes;
}
