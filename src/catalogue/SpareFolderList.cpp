#include "catalogue/SpareFolderList.h"

#include "catalogue/FolderEditor.h"
#include "common/ExplorerWindow.h"
#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"

void SpareFolderList::showModal(const FolderKind &kind)
{
    SpareFolderList list(kind);
    list.exec();
}

SpareFolderList::SpareFolderList(const FolderKind &kind)
    : QDialog(windowOwner()), m_kind(kind), m_folders(openRecordset(kind.listStatement))
{
    ui.setupUi(this);
    setObjectName(kind.list);
    setWindowTitle(kind.listCaption);
    ui.dblLocation->setAccessibleName(kind.listCaption);
    onUserAction(ui.cmdNew, &QPushButton::clicked, this, &SpareFolderList::cmdNew_Click);
    onUserAction(ui.cmdEdit, &QPushButton::clicked, this, &SpareFolderList::cmdEdit_Click);
    onUserAction(ui.dblLocation, &QListWidget::doubleClicked, this, &SpareFolderList::cmdEdit_Click);
    onUserAction(ui.cmdDelete, &QPushButton::clicked, this, &SpareFolderList::cmdDelete_Click);
    onUserAction(ui.Command2, &QPushButton::clicked, this, &QDialog::accept);
    load();
    m_kind.listOpen = true;
}

SpareFolderList::~SpareFolderList() { m_kind.listOpen = false; }

void SpareFolderList::load()
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

void SpareFolderList::cmdNew_Click()
{
    if (FolderEditor::Startup(m_kind, "New", 0, "Tools", 0))
        load();
}

void SpareFolderList::cmdEdit_Click()
{
    if (ui.dblLocation->currentRow() < 0)
        return;
    m_folders.setPosition(ui.dblLocation->currentRow());
    if (FolderEditor::Startup(m_kind, "Edit", int(m_folders.field(u"ID").toInteger()), {}, 0))
        load();
}

void SpareFolderList::cmdDelete_Click()
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
        // A server also refuses while there are folders below, which is no matter of tools.
        const bool toolsInIt = error.number() == EngineError::relatedRecords && error.text().contains("'Tools'");
        QString problem = m_kind.inUseMessage;
        if (!toolsInIt)
            problem = m_kind.otherErrorMessage + QStringLiteral("%1  %2").arg(error.number()).arg(error.text());
        msgBox({.text = problem, .caption = "Error!", .icon = QMessageBox::Warning});
        if (error.number() == EngineError::recordDeleted)
            load();
        return;
    }
    load();
    if (ExplorerWindow *explorer = explorerIfOpen(); explorer && explorer->TreeMode() == m_kind.mode)
        explorer->rebuildView();
}
