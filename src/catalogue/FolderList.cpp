#include "catalogue/FolderList.h"

#include "catalogue/FolderEditor.h"
#include "common/ExplorerView.h"
#include "db/Session.h"
#include "platform/gui/Handler.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/WindowOwner.h"

void FolderList::showModal(const FolderKind &kind)
{
    FolderList list(kind);
    list.exec();
}

FolderList::FolderList(const FolderKind &kind)
    : QDialog(windowOwner()), m_kind(kind), m_folders(openRecordset(kind.listStatement))
{
    ui.setupUi(this);
    setObjectName(kind.list);
    setWindowTitle(kind.listCaption);
    ui.dblLocation->setAccessibleName(kind.listCaption);
    onUserAction(ui.cmdNew, &QPushButton::clicked, this, &FolderList::cmdNew_Click);
    onUserAction(ui.cmdEdit, &QPushButton::clicked, this, &FolderList::cmdEdit_Click);
    onUserAction(ui.dblLocation, &QListWidget::doubleClicked, this, &FolderList::cmdEdit_Click);
    onUserAction(ui.cmdDelete, &QPushButton::clicked, this, &FolderList::cmdDelete_Click);
    onUserAction(ui.Command2, &QPushButton::clicked, this, &QDialog::accept);
    load();
    m_kind.listOpen = true;
}

FolderList::~FolderList() { m_kind.listOpen = false; }

void FolderList::load()
{
    const int row = ui.dblLocation->currentRow();
    m_folders = openRecordset(m_kind.listStatement);
    QStringList descriptions;
    for (; !m_folders.atEnd(); m_folders.moveNext())
        descriptions.append(m_folders.text(u"Description"));
    ui.dblLocation->clear();
    ui.dblLocation->addItems(descriptions);
    ui.dblLocation->setCurrentRow(qMin(qMax(0, row), int(descriptions.size()) - 1));
}

void FolderList::cmdNew_Click()
{
    if (FolderEditor::Startup(m_kind, "New", 0, "Tools", 0))
        load();
}

void FolderList::cmdEdit_Click()
{
    if (ui.dblLocation->currentRow() < 0)
        return;
    m_folders.setPosition(ui.dblLocation->currentRow());
    if (FolderEditor::Startup(m_kind, "Edit", int(m_folders.field(u"ID").toInteger()), {}, 0))
        load();
}

void FolderList::cmdDelete_Click()
{
    if (ui.dblLocation->currentRow() < 0)
        return;
    if (msgBox({.text = "Delete Selected Item?",
                .caption = "Deleting!",
                .icon = QMessageBox::Question,
                .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                .defaultButton = QMessageBox::Cancel})
        != QMessageBox::Ok)
        return;
    try {
        m_folders.setPosition(ui.dblLocation->currentRow());
        m_folders.remove();
    } catch (const EngineError &error) {
        QString problem = m_kind.inUseMessage;
        if (error.number() != EngineError::relatedRecords)
            problem = m_kind.otherErrorMessage + QStringLiteral("%1  %2").arg(error.number()).arg(error.text());
        msgBox({.text = problem, .caption = "Error!", .icon = QMessageBox::Warning});
        if (error.number() == EngineError::recordDeleted)
            load();
        return;
    }
    load();
    if (ExplorerView *explorer = explorerIfOpen(); explorer && explorer->TreeMode() == m_kind.mode)
        explorer->rebuildView();
}
