#include "transactions/frmCheckOut.h"

#include "common/ExplorerWindow.h"
#include "common/ItemId.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/UserAction.h"
#include "platform/system/Clock.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"
#include "transactions/DialogSteps.h"
#include "transactions/JobPicker.h"
#include "transactions/Lending.h"

frmCheckOut::frmCheckOut()
{
    const HourGlass busy;
    ui.setupUi(this);
    ui.lblDate->setText(Format::dialogDate(Clock::now()));
    new JobPicker({ui.dbcEmp, ui.txtEmpNo, ui.dbcJobType, ui.dbcJob, ui.Label2},
                  {.jobLabel = "Job Number", .overheadOrder = "Description"}, this);
    theExplorer().narrowSelection();
    const ListItem *item = theExplorer().selectedItem();
    ui.lblTool->setText(item->text);
    // Behind the mark "..\" of a folder elsewhere in the tree.
    ui.lblLocation->setText(item->subItem(3).mid(3));

    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &frmCheckOut::cmdOK_Click);
    onUserAction(ui.cndCancel, &QPushButton::clicked, this, &QDialog::reject);
}

bool frmCheckOut::SaveCheckOut()
{
    const HourGlass busy;
    if (!MainSubs::isFilled(ui.dbcEmp, "You must select an Employee!")
        || !MainSubs::isFilled(ui.dbcJob, "You must select a Job Number or Overhead Description!"))
        return false;

    ListItem item = *theExplorer().selectedItem();
    const qint16 toolId = ItemId::of(item).toolNumber();
    const Lending::Loan loan{.toolId = toolId,
                             .jobOrOH = Lending::chargedNumber(ui.dbcJob->text(), ui.dbcJob->boundValue().toText()),
                             .lineItemTypeId = toLong(ui.dbcJobType->boundValue().toText()),
                             .employee = ui.dbcEmp->boundValue().toText()};
    if (!MainSubs::did(this, "The tool was not checked out.", [&] { Lending::lend(loan); }))
        return false;

    item.key = ItemId{ItemId::toolOut, toolId}.itemKey();
    item.setSubItem(5, ui.dbcEmp->text());
    item.icon = ItemIcon::toolOut;
    theExplorer().patchSelectedItem(item);
    return true;
}

void frmCheckOut::cmdOK_Click()
{
    // Alt+O leaves the focus in a box that is being typed in; what hangs on its choice comes first.
    ui.cmdOK->setFocus();
    if (!SaveCheckOut())
        return;
    accept();
    theExplorer().focusList();
}
