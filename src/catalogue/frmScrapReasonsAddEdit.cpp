#include "catalogue/frmScrapReasonsAddEdit.h"

#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/Handler.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/WindowOwner.h"

#include <QApplication>

bool frmScrapReasonsAddEdit::Startup(const QString &mode, int id)
{
    frmScrapReasonsAddEdit editor(mode, id);
    editor.exec();
    return editor.m_saved;
}

frmScrapReasonsAddEdit::frmScrapReasonsAddEdit(const QString &mode, int id)
    : QDialog(windowOwner()), m_isNew(mode == "New"), m_id(QString::number(id))
{
    ui.setupUi(this);
    setWindowTitle(m_isNew ? "New Scrap Reason" : "Edit Scrap Reason");
    if (!m_isNew)
        loadReason();
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &frmScrapReasonsAddEdit::cmdOK_Click);
    onUserAction(ui.cmdOKNew, &QPushButton::clicked, this, &frmScrapReasonsAddEdit::cmdOKNew_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmScrapReasonsAddEdit::loadReason()
{
    ui.cmdOKNew->hide();
    const Recordset reason = openRecordset("SELECT * FROM ScrapReasons WHERE id =" + m_id);
    if (reason.isEmpty())
        msgBox({.text = m_id + " not found! Scrap Reasons table may need to be fixed!",
                .caption = QApplication::applicationName(),
                .icon = QMessageBox::Critical});
    else
        ui.txtDescription->setText(reason.text(u"description"));
    ui.txtDescription->selectAll();
}

bool frmScrapReasonsAddEdit::ValidData()
{
    const QString text = ui.txtDescription->text();
    // A reason does not count against itself.
    const QString others = m_isNew ? QString() : " AND id <>" + m_id;
    QString problem;
    if (text.isEmpty())
        problem = "Description may not be blank!";
    else if (!openRecordset("SELECT * FROM ScrapReasons WHERE description=" + quoted(text) + others).isEmpty())
        problem = text + " already exists!";
    else
        return true;
    msgBox({.text = problem, .caption = QApplication::applicationName(), .icon = QMessageBox::Warning});
    ui.txtDescription->setFocus();
    return false;
}

void frmScrapReasonsAddEdit::SaveRecord()
{
    const QString text = quoted(ui.txtDescription->text());
    if (m_isNew)
        execute("INSERT INTO ScrapReasons (description) VALUES(" + text + ")");
    else
        execute("UPDATE ScrapReasons SET description=" + text + " WHERE id=" + m_id);
    m_saved = true;
}

void frmScrapReasonsAddEdit::cmdOK_Click()
{
    if (!ValidData())
        return;
    SaveRecord();
    accept();
}

void frmScrapReasonsAddEdit::cmdOKNew_Click()
{
    if (!ValidData())
        return;
    SaveRecord();
    ui.txtDescription->clear();
    ui.txtDescription->setFocus();
}
