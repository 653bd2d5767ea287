#include "catalogue/FolderEditor.h"

#include "common/ExplorerView.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/Handler.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/WindowOwner.h"
#include "platform/text/Numbers.h"
#include "transactions/KeyFilter.h"

bool FolderEditor::Startup(const FolderKind &kind, const QString &mode, int id, const QString &parentText, int parentId)
{
    FolderEditor editor(kind, mode, id, parentText, parentId);
    editor.exec();
    return editor.m_saved;
}

FolderEditor::FolderEditor(const FolderKind &kind, const QString &mode, int id, const QString &parentText, int parentId)
    : QDialog(windowOwner()), m_kind(kind), m_isNew(mode == "New"), m_id(id), m_parentId(parentId)
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
        ui.txtDescription->setText(kind.description(id));
        ui.txtDescription->selectAll();
    }
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &FolderEditor::cmdOK_Click);
    onUserAction(ui.cmdOKNew, &QPushButton::clicked, this, &FolderEditor::cmdOKNew_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool FolderEditor::ValidData()
{
    const QString text = ui.txtDescription->text();
    const int rowsAllowed = m_isNew ? 0 : 1;
    QString problem;
    if (isNumeric(text))
        problem = m_kind.numberMessage;
    else if (text.trimmed().isEmpty())
        problem = "Please enter a description.";
    else if (text.contains('\\'))
        problem = "You may not use a '\\' character for the description.";
    else if (openRecordset(m_kind.countNamed + quoted(text)).field(u"cnt").toInteger() > rowsAllowed)
        problem = m_kind.duplicateMessage;
    else
        return true;
    ui.txtDescription->setFocus();
    inform(problem);
    return false;
}

void FolderEditor::SaveRecord()
{
    const QString text = ui.txtDescription->text();
    ExplorerView *explorer = explorerIfOpen();
    if (m_isNew) {
        execute(m_kind.insert + quoted(text) + "," + QString::number(m_parentId) + ")");
        m_saved = true;
        const int id = int(openRecordset(m_kind.idNamed + quoted(text)).field(u"ID").toInteger());
        if (explorer)
            explorer->addChildNode(m_kind.mode, m_parentId, id, text);
    } else {
        execute(m_kind.rename + quoted(text) + " WHERE id=" + QString::number(m_id));
        m_saved = true;
        if (explorer)
            explorer->renameNode(m_kind.mode, m_id, text);
    }
}

void FolderEditor::cmdOK_Click()
{
    if (!ValidData())
        return;
    SaveRecord();
    accept();
}

void FolderEditor::cmdOKNew_Click()
{
    if (!ValidData())
        return;
    SaveRecord();
    ui.txtDescription->clear();
    ui.txtDescription->setFocus();
}
