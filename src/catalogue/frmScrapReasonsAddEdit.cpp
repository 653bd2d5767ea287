#include "catalogue/frmScrapReasonsAddEdit.h"

#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "transactions/AtomicChange.h"
#include "transactions/DialogSteps.h"

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
    const Recordset reason = m_reason.load(m_id.toInt());
    if (reason.isEmpty())
        say(m_id + " not found! Scrap Reasons table may need to be fixed!", QMessageBox::Critical);
    else
        ui.txtDescription->setText(reason.text(u"description"));
    ui.txtDescription->selectAll();
}

void frmScrapReasonsAddEdit::say(const QString &problem, QMessageBox::Icon icon)
{
    msgBox({.text = problem, .caption = QApplication::applicationName(), .icon = icon});
}

QString frmScrapReasonsAddEdit::problemWith(const QString &text) const
{
    if (text.isEmpty())
        return "Description may not be blank!";
    // A reason does not count against itself.
    const QString others = m_isNew ? QString() : " AND id <>" + m_id;
    const Recordset same = openRecordset("SELECT * FROM ScrapReasons WHERE description=" + quoted(text) + others);
    return same.isEmpty() ? QString() : text + " already exists!";
}

bool frmScrapReasonsAddEdit::ValidData()
{
    MainSubs::tidyTexts(this);
    const QString problem = problemWith(ui.txtDescription->text());
    if (problem.isEmpty())
        return true;
    say(problem, QMessageBox::Warning);
    ui.txtDescription->setFocus();
    return false;
}

bool frmScrapReasonsAddEdit::SaveRecord()
{
    const QString text = ui.txtDescription->text();
    const auto write = [&] {
        const QString problem = problemWith(text);
        refuseUnless(problem.isEmpty(), problem);
        execute(m_isNew ? "INSERT INTO ScrapReasons (description) VALUES(" + quoted(text) + ")"
                        : "UPDATE ScrapReasons SET description=" + quoted(text) + " WHERE id=" + m_id);
    };
    const AtomicChange change =
        m_isNew ? AtomicChange::attempt(write) : m_reason.save("The reason was deleted meanwhile.", write);
    if (change.outcome == AtomicChange::Done)
        return m_saved = true;
    if (!change.why.isEmpty())
        say(change.why, change.outcome == AtomicChange::Refused ? QMessageBox::Warning : QMessageBox::Critical);
    return false;
}

void frmScrapReasonsAddEdit::cmdOK_Click()
{
    if (save())
        accept();
}

void frmScrapReasonsAddEdit::cmdOKNew_Click()
{
    if (!save())
        return;
    ui.txtDescription->clear();
    ui.txtDescription->setFocus();
}
