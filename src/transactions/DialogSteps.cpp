#include "transactions/DialogSteps.h"

#include "common/ExplorerWindow.h"
#include "common/ItemId.h"
#include "platform/gui/BoundCombo.h"
#include "platform/gui/MsgBox.h"
#include "transactions/AtomicChange.h"

#include <QDialog>
#include <QLineEdit>

void MainSubs::tidyTexts(QWidget *form)
{
    for (QLineEdit *box : form->findChildren<QLineEdit *>()) {
        const auto *combo = qobject_cast<BoundCombo *>(box->parent());
        const QString tidy = box->text().simplified();
        if (box->text() != tidy && (!combo || combo->isFreeText()))
            box->setText(tidy);
    }
}

bool MainSubs::isFilled(BoundCombo *box, const QString &message)
{
    if (!box->text().isEmpty())
        return true;
    inform(box->whyUnoffered().isEmpty() ? message : box->whyUnoffered() + '\n' + message);
    box->setFocus();
    box->lineEdit()->selectAll(); // what is typed next replaces it
    return false;
}

bool MainSubs::did(QDialog *dialog, const QString &notDone, const std::function<void()> &steps)
{
    const AtomicChange change = AtomicChange::attempt(steps);
    if (change.outcome == AtomicChange::Failed)
        msgBox({.text = notDone + '\n' + change.why, .icon = QMessageBox::Critical});
    if (change.outcome == AtomicChange::Refused) {
        // The dialog goes first: of two windows that close at once the lower one leaves the keyboard with nobody.
        dialog->reject();
        theExplorer().listSelectedNode();
        theExplorer().focusList();
        inform(change.why + '\n' + notDone);
    }
    return change.outcome == AtomicChange::Done;
}

void MainSubs::showReturned(qint16 toolId)
{
    ExplorerWindow &explorer = theExplorer();
    if (explorer.TreeMode() != "checkedOut") {
        ListItem item = *explorer.selectedItem();
        item.setSubItem(5, {});
        item.icon = ItemIcon::toolInStock;
        item.key = ItemId{ItemId::toolInStock, toolId}.itemKey();
        explorer.patchSelectedItem(item);
    } else if (explorer.itemCount() < 2) {
        explorer.rebuildView();
    } else {
        explorer.removeSelectedItem();
    }
}
