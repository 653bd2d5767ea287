#include "transactions/frmCheckIn.h"

#include "common/ExplorerView.h"
#include "common/ItemKeys.h"
#include "platform/gui/Handler.h"
#include "platform/system/Clock.h"
#include "platform/text/Format.h"
#include "transactions/MainSubs.h"

frmCheckIn::frmCheckIn()
{
    ui.setupUi(this);
    const ListItem *item = theExplorer().selectedItem();
    ui.lblDescription->setText(item->text);
    ui.lblPartNo->setText(item->subItem(1));
    ui.lblDate->setText(Format::dialogDate(Clock::now()));

    onUserAction(ui.cmdOk, &QPushButton::clicked, this, &frmCheckIn::cmdOk_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCheckIn::cmdOk_Click()
{
    const HourGlass busy;
    ExplorerView &explorer = theExplorer();
    ListItem item = *explorer.selectedItem();
    const qint16 toolId = ItemKeys::toolIdOf(item.key, 2);
    MainSubs::closeLoans(toolId);

    if (explorer.TreeMode() != "checkedOut") {
        item.setSubItem(5, {});
        item.icon = ItemIcon::toolInStock;
        item.key = ItemKeys::toolInStock(toolId);
        explorer.patchSelectedItem(item);
    } else if (explorer.itemCount() < 2) {
        explorer.rebuildView();
    } else {
        explorer.removeSelectedItem();
    }
    accept();
    explorer.focusList();
}
