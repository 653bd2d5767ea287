#include "transactions/MainSubs.h"

#include "common/ExplorerView.h"
#include "common/ItemId.h"
#include "db/Session.h"
#include "platform/gui/BoundCombo.h"
#include "platform/gui/MsgBox.h"
#include "transactions/Deed.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"
#include "transactions/frmScrapRestore.h"

#include <QDialog>
#include <QLineEdit>

namespace {

void askForTool(const QString &message)
{
    inform(message);
    if (theExplorer().itemCount() > 0) {
        theExplorer().selectFirstItem();
        theExplorer().focusList();
    }
}

}

void MainSubs::CheckOutSelectedTool()
{
    const ListItem *item = theExplorer().selectedItem();
    if (!item) {
        askForTool("Please select a tool to Check Out.");
    } else if (item->icon == ItemIcon::toolOut) {
        msgBox({.text = "The selected tool is checked out and cannot be Checked out Again!"});
    } else if (item->icon == ItemIcon::toolScrapped) {
        msgBox({.text = "The selected tool is scrapped and cannot be Checked Out!"});
    } else if (ItemId::of(*item).kind == ItemId::toolInStock) {
        frmCheckOut::showModal();
    }
}

void MainSubs::CheckInSelectedTool()
{
    const ListItem *item = theExplorer().selectedItem();
    if (!item) {
        askForTool("Please select a tool to Check In.");
    } else if (item->icon == ItemIcon::toolInStock) {
        // The second button does nothing; people are used to it.
        msgBox({.text = "The selected tool is already checked in!", .buttons = QMessageBox::Ok | QMessageBox::Cancel});
    } else if (item->icon == ItemIcon::toolScrapped) {
        msgBox({.text = "The selected tool is scrapped and must be restored before using!"});
    } else if (ItemId::of(*item).kind == ItemId::toolOut) {
        // The folders of the checked-out view are numbered like tools, but are none.
        frmCheckIn::showModal();
    }
}

void MainSubs::RestoreSelectedScrap()
{
    const ListItem *item = theExplorer().selectedItem();
    if (!item) {
        inform("Please select a scrapped tool to restore.");
        if (theExplorer().itemCount() > 0)
            theExplorer().selectFirstItem();
    } else if (ItemId::of(*item).kind == ItemId::scrapRecord) {
        frmScrapRestore::showModal();
    }
}

bool MainSubs::PurgeScrapped(const QString &kind, qint32 id)
{
    if (kind != "Tool")
        return false;
    const QString scrapId = QString::number(id);
    QStringList problems;
    const auto numbered = [](int number, const QString &text) {
        return QStringLiteral("%1  %2").arg(number).arg(text);
    };
    const Deed deed = Deed::attempt([&] {
        const Recordset scrap = openRecordset("Select Scrap.ToolId from Scrap where id=" + scrapId);
        refuseUnless(!scrap.isEmpty(), "The scrapped tool was restored or deleted meanwhile.");
        for (const QString &statement :
             {"Delete from CheckOutIn where tool_id=" + QString::number(scrap.field(u"ToolId").toInteger()),
              "Delete from Scrap where ID=" + scrapId,
              // The record's own number, not its tool's: where a live tool has that number it goes too. The numbers of
              // scrap records start high, so that this seldom comes about.
              "DELETE FROM tools WHERE id=" + scrapId}) {
            try {
                execute(statement);
            } catch (const EngineError &error) {
                problems.append(numbered(error.number(), error.text()));
            }
        }
    });
    if (deed.outcome != Deed::Done)
        problems.append(deed.number == 0 ? deed.why : numbered(deed.number, deed.why));
    // Not while the file is held.
    problems.removeDuplicates();
    for (const QString &problem : std::as_const(problems))
        msgBox({.text = problem});
    return problems.isEmpty();
}

bool MainSubs::did(QDialog *dialog, const QString &notDone, const std::function<void()> &steps)
{
    const Deed deed = Deed::attempt(steps);
    if (deed.outcome == Deed::Failed)
        msgBox({.text = notDone + '\n' + deed.why, .icon = QMessageBox::Critical});
    if (deed.outcome == Deed::Refused) {
        // The dialog goes first: of two windows that close at once the lower one leaves the keyboard with nobody.
        dialog->reject();
        theExplorer().listSelectedNode();
        theExplorer().focusList();
        inform(deed.why + '\n' + notDone);
    }
    return deed.outcome == Deed::Done;
}

void MainSubs::showReturned(qint16 toolId)
{
    ExplorerView &explorer = theExplorer();
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

int MainSubs::FilterKey(int keyAscii, const QString &allowed, bool allowBackspace, const QString &disallowed)
{
    constexpr char16_t backspace = 8;
    const QChar character = QChar(keyAscii).toUpper();
    QString passing = allowed.toUpper();
    if (allowBackspace)
        passing.prepend(backspace);
    if (allowed != "*" && !passing.contains(character, Qt::CaseInsensitive))
        return 0;
    return disallowed.contains(character, Qt::CaseInsensitive) ? 0 : keyAscii;
}

void MainSubs::tidyTexts(QWidget *form)
{
    for (QLineEdit *box : form->findChildren<QLineEdit *>()) {
        const auto *combo = qobject_cast<BoundCombo *>(box->parent());
        const QString tidy = box->text().simplified();
        if (box->text() != tidy && (!combo || combo->isFreeText()))
            box->setText(tidy);
    }
}

bool MainSubs::ValidData(const QString &location, const QString &type, const QString &manufacturer,
                         const QString &description)
{
    constexpr int longestManufacturer = 255;
    QString problem;
    if (location.isEmpty())
        problem = "Location may not be blank!";
    else if (type.isEmpty())
        problem = "Tool Type may not be blank!";
    else if (manufacturer.length() > longestManufacturer)
        problem = "Manufacturer may not be longer than 255 characters!";
    else if (description.isEmpty())
        problem = "Description may not be blank!";
    else
        return true;
    inform(problem);
    return false;
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
