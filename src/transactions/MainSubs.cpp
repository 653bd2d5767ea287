#include "transactions/MainSubs.h"

#include "common/ExplorerView.h"
#include "common/ItemKeys.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/BoundCombo.h"
#include "platform/gui/MsgBox.h"
#include "platform/system/Clock.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"

void MainSubs::CheckOutSelectedTool()
{
    const ListItem *item = theExplorer().selectedItem();
    if (!item) {
        inform("Please select a tool to Check Out.");
        if (theExplorer().itemCount() > 0) {
            theExplorer().selectFirstItem();
            theExplorer().focusList();
        }
    } else if (item->icon == ItemIcon::toolOut) {
        msgBox({ .text = "The selected tool is checked out and cannot be Checked out Again!" });
    } else if (item->icon == ItemIcon::toolScrapped) {
        msgBox({ .text = "The selected tool is scrapped and cannot be Checked Out!" });
    } else if (item->key.startsWith('r')) {
        frmCheckOut::showModal();
    }
}

void MainSubs::CheckInSelectedTool()
{
    const ListItem *item = theExplorer().selectedItem();
    if (!item) {
        inform("Please select a tool to Check In.");
        if (theExplorer().itemCount() > 0) {
            theExplorer().selectFirstItem();
            theExplorer().focusList();
        }
    } else if (item->icon == ItemIcon::toolInStock) {
        // The second button does nothing; people are used to it.
        msgBox(
            { .text = "The selected tool is already checked in!", .buttons = QMessageBox::Ok | QMessageBox::Cancel });
    } else if (item->icon == ItemIcon::toolScrapped) {
        msgBox({ .text = "The selected tool is scrapped and must be restored before using!" });
    } else if (item->key.startsWith("co")) {
        frmCheckIn::showModal();
    }
}

void MainSubs::closeLoans(qint16 toolId)
{
    const QString id = QString::number(toolId);
    execute("Update checkOutIn set DateIn =" + dateLiteral(Clock::now()) + ", Active=0 where Tool_Id=" + id
            + " And Active=-1");
    execute("Update tools set out=0 where id=" + id);
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

bool MainSubs::isFilled(BoundCombo *box, const QString &message)
{
    if (!box->text().isEmpty())
        return true;
    inform(message);
    box->setFocus();
    return false;
}
