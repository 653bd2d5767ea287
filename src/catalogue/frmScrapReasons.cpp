#include "catalogue/frmScrapReasons.h"

#include "catalogue/frmScrapReasonsAddEdit.h"
#include "common/ItemId.h"
#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"

frmScrapReasons::frmScrapReasons() : QDialog(windowOwner()), m_reasons([](int) { return ItemPicture(); })
{
    ui.setupUi(this);
    ui.lvwMI->setModel(&m_reasons);
    onUserAction(ui.cmdNew, &QPushButton::clicked, this, &frmScrapReasons::cmdNew_Click);
    onUserAction(ui.cmdEdit, &QPushButton::clicked, this, &frmScrapReasons::cmdEdit_Click);
    onUserAction(ui.lvwMI, &QTreeView::doubleClicked, this, &frmScrapReasons::cmdEdit_Click);
    onUserAction(ui.cmdDelete, &QPushButton::clicked, this, &frmScrapReasons::cmdDelete_Click);
    onUserAction(ui.cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    load();
}

void frmScrapReasons::load()
{
    const int row = ui.lvwMI->currentIndex().row();
    Recordset reasons = openRecordset("SELECT * FROM ScrapReasons ORDER BY description");
    {
        const KeyedList::Filling filling(m_reasons);
        m_reasons.clear();
        m_reasons.setColumns({{"Description", 4000}});
        for (; !reasons.atEnd(); reasons.moveNext())
            m_reasons.add({.key = "l" + reasons.text(u"ID"), .text = reasons.text(u"Description")});
    }
    ui.lvwMI->setCurrentIndex(m_reasons.index(qMin(qMax(0, row), m_reasons.count() - 1), 0));
}

std::optional<int> frmScrapReasons::selectedReason() const
{
    const QModelIndex index = ui.lvwMI->currentIndex();
    if (!index.isValid())
        return {};
    return int(ItemId::of(m_reasons.item(index.row())).number);
}

void frmScrapReasons::cmdNew_Click()
{
    frmScrapReasonsAddEdit::Startup("New", 0);
    load();
}

void frmScrapReasons::cmdEdit_Click()
{
    if (const auto id = selectedReason()) {
        frmScrapReasonsAddEdit::Startup("Edit", *id);
        load();
    }
}

void frmScrapReasons::cmdDelete_Click()
{
    const auto id = selectedReason();
    if (!id
        || msgBox({.text = "Delete this item?",
                   .caption = "Delete",
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No,
                   .defaultButton = QMessageBox::No})
            != QMessageBox::Yes)
        return;
    execute("DELETE FROM ScrapReasons WHERE id = " + QString::number(*id));
    load();
}
