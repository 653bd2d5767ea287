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
    const qint16 toolId = ItemKeys::toolIdOf(explorer.selectedItem()->key, 2);
    MainSubs::closeLoans(toolId);
    accept();
    MainSubs::showReturned(toolId);
    explorer.focusList();
}
