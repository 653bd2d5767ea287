#include "transactions/ToolCommands.h"

#include "common/ExplorerWindow.h"
#include "common/ItemId.h"
#include "platform/gui/MsgBox.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"
#include "transactions/frmScrapRestore.h"

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
