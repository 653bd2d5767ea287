#include "catalogue/FolderEditor.h"

#include "common/ExplorerWindow.h"
#include "db/Literals.h"
#include "db/Schema.h"
#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "platform/text/Numbers.h"
#include "transactions/AtomicChange.h"
#include "transactions/DialogSteps.h"
#include "transactions/KeyFilter.h"

bool FolderEditor::Startup(const FolderKind &kind, const QString &mode, int id, const QString &parentText, int parentId)
{
    FolderEditor editor(kind, mode, id, parentText, parentId);
    execOver(editor);
    return editor.m_saved;
}

FolderEditor::FolderEditor(const FolderKind &kind, const QString &mode, int id, const QString &parentText, int parentId)
    : QDialog(windowOwner()),
      m_kind(kind),
      m_isNew(mode == "New"),
      m_id(id),
      m_parentId(parentId),
      m_folder(kind.descriptionOf, {"Description"})
{
    ui.setupUi(this);
    setObjectName(kind.editor);
    ui.Frame1->setTitle(kind.frame);
    ui.txtDescription->setObjectName(kind.textBox);
    KeyFilter::watch(ui.txtDescription);

    ui.cmdOKNew->setVisible(m_isNew);
    if (m_isNew) {
        setWindowTitle(kind.newCaption + parentText);
    } else {
        setWindowTitle(kind.editCaption);
        ui.txtDescription->setText(m_folder.load(id).text(u"Description"));
        ui.txtDescription->selectAll();
    }
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &FolderEditor::cmdOK_Click);
    onUserAction(ui.cmdOKNew, &QPushButton::clicked, this, &FolderEditor::cmdOKNew_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool FolderEditor::isTaken(const QString &name) const
{
    const int rowsAllowed = m_isNew ? 0 : 1;
    return openRecordset(m_kind.countNamed + quoted(name)).field(u"cnt").toInteger() > rowsAllowed;
}

bool FolderEditor::ValidData()
{
    MainSubs::tidyTexts(this);
    const QString text = ui.txtDescription->text();
    QString problem;
    if (isNumeric(text))
        problem = m_kind.numberMessage;
    else if (text.isEmpty())
        problem = "Please enter a description.";
    else if (text.contains('\\'))
        problem = "You may not use a '\\' character for the description.";
    else if (isTaken(text))
        problem = m_kind.duplicateMessage;
    else
        return true;
    ui.txtDescription->setFocus();
    inform(problem);
    return false;
}

bool FolderEditor::SaveRecord()
{
    const QString text = ui.txtDescription->text();
    int id = m_id;
    const auto add = [&] {
        refuseUnless(!isTaken(text), m_kind.duplicateMessage);
        refuseUnless(m_parentId == 0 || m_kind.exists(m_parentId), m_kind.goneMessage);
        execute(m_kind.insert + quoted(text) + "," + QString::number(m_parentId) + ")");
        id = int(openRecordset(m_kind.idNamed + quoted(text)).field(u"ID").toInteger());
        refuseUnless(id <= Schema::highestFolderNumber, m_kind.noMoreMessage);
    };
    const auto rename = [&] {
        refuseUnless(!isTaken(text), m_kind.duplicateMessage);
        execute(m_kind.rename + quoted(text) + " WHERE id=" + QString::number(m_id));
    };
    const AtomicChange change = m_isNew ? AtomicChange::attempt(add) : m_folder.save(m_kind.goneMessage, rename);
    ExplorerWindow *explorer = explorerIfOpen();
    if (change.outcome != AtomicChange::Done) {
        if (!change.why.isEmpty())
            msgBox({.text = change.why,
                    .icon = change.outcome == AtomicChange::Failed ? QMessageBox::Critical : QMessageBox::Information});
        if (change.outcome == AtomicChange::Refused && explorer && explorer->TreeMode() == m_kind.mode)
            explorer->rebuildView();
        return false;
    }
    m_saved = true;
    if (explorer && m_isNew)
        explorer->addChildNode(m_kind.mode, m_parentId, id, text);
    else if (explorer)
        explorer->renameNode(m_kind.mode, m_id, text);
    return true;
}

void FolderEditor::cmdOK_Click()
{
    if (save())
        accept();
}

void FolderEditor::cmdOKNew_Click()
{
    if (!save())
        return;
    ui.txtDescription->clear();
    ui.txtDescription->setFocus();
}
