#include "transactions/frmCheckIn.h"

#include "common/ExplorerWindow.h"
#include "common/ItemId.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/UserAction.h"
#include "platform/system/Clock.h"
#include "platform/text/Format.h"
#include "transactions/DialogSteps.h"
#include "transactions/Lending.h"

frmCheckIn::frmCheckIn()
{
    ui.setupUi(this);
    theExplorer().narrowSelection();
    const ListItem *item = theExplorer().selectedItem();
    ui.lblDescription->setText(Format::breakable(item->text));
    ui.lblPartNo->setText(item->subItem(1));
    m_toolId = ItemId::of(*item).toolNumber();
    const Lending::OpenLoan loan = Lending::openLoan(m_toolId);
    m_loanShown = loan.id;
    ui.lblEmployee->setText(loan.holder());
    ui.lblDate->setText(Format::dialogDate(Clock::now()));

    onUserAction(ui.cmdOk, &QPushButton::clicked, this, &frmCheckIn::cmdOk_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCheckIn::cmdOk_Click()
{
    const HourGlass busy;
    if (!MainSubs::did(this, "Nothing was changed.", [this] { Lending::takeBack(m_toolId, m_loanShown); }))
        return;
    accept();
    MainSubs::showReturned(m_toolId);
    theExplorer().focusList();
}
