#include "transactions/frmScrap.h"

#include "common/ExplorerWindow.h"
#include "common/ItemId.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/UserAction.h"
#include "platform/system/Clock.h"
#include "transactions/DialogSteps.h"
#include "transactions/JobPicker.h"
#include "transactions/KeyFilter.h"
#include "transactions/Lending.h"

namespace {

// Shows what a loan says. Of rows with the same text the one with the loan's own number is meant; where that one is
// not offered any more, another with its text must not stand in for it.
void choose(BoundCombo *box, const QString &text, const QString &boundValue, const QString &whyNot)
{
    if (const int row = box->findData(boundValue); row >= 0)
        box->setCurrentIndex(row);
    else if (text.isEmpty())
        box->setText({});
    else
        box->showUnoffered(text, text + whyNot);
}

// Number of the reason described so; a new one is added to the list.
QString reasonNumber(const QString &reason)
{
    const QString statement = "Select * from scrapReasons where description ='" + reason + "'";
    const Recordset known = openRecordset(statement);
    if (!known.isEmpty())
        return known.text(u"ID");
    execute("INSERT INTO ScrapReasons (Description) VALUES ('" + reason + "');");
    return openRecordset(statement).text(u"ID");
}

}

frmScrap::frmScrap()
{
    const HourGlass busy;
    ui.setupUi(this);
    KeyFilter::watch(ui.txtNotes);
    KeyFilter::watch(ui.dbcScrapReason);
    new JobPicker({ui.dbcEmp, ui.txtEmpNo, ui.dbcJobType, ui.dbcJob, ui.Label2},
                  {.jobLabel = "Scrapped on Job Number:", .overheadOrder = "OperNo"}, this);
    ui.dbcScrapReason->setSource(openRecordset("Select Id,Description from ScrapReasons order by description"),
                                 "Description", "Id");
    theExplorer().narrowSelection();
    const ListItem *item = theExplorer().selectedItem();
    ui.lblTool->setText(item->text);
    ui.lblLocation->setText(item->subItem(3));
    m_isOut = ItemId::of(*item).kind == ItemId::toolOut;
    m_toolId = ItemId::of(*item).toolNumber();
    if (item->icon == ItemIcon::toolOut)
        GetCheckedOutInfo(m_toolId);

    ui.dbcEmp->lineEdit()->selectAll();

    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &frmScrap::cmdOK_Click);
    onUserAction(ui.cndCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmScrap::GetCheckedOutInfo(qint16 toolId)
{
    const Lending::OpenLoan loan = Lending::openLoan(toolId);
    if (loan.id == 0)
        return;
    m_loanShown = loan.id;
    choose(ui.dbcEmp, loan.name, loan.employeeNumber, " had the tool, but is no active employee any more.");

    const Recordset kind =
        openRecordset("Select Code from LineItemType where index =" + QString::number(loan.lineItemTypeId));
    if (kind.isEmpty()) {
        ui.dbcJobType->setText({});
        return;
    }
    // The choice of the type lists its jobs or operations.
    ui.dbcJobType->setText(kind.text(u"Code"));
    const QString jobOrOH = QString::number(loan.jobOrOH);
    if (kind.text(u"Code") == "Job") {
        ui.dbcJob->setText(jobOrOH);
        if (ui.dbcJob->text().isEmpty())
            ui.dbcJob->showUnoffered(jobOrOH, "The tool was lent for job " + jobOrOH + ", which is not open any more.");
        return;
    }
    const Recordset operation = openRecordset("Select Description from Operation where OperNo =" + jobOrOH);
    choose(ui.dbcJob, operation.isEmpty() ? QString() : operation.text(u"Description"), jobOrOH,
           " is no overhead operation any more.");
}

void frmScrap::cmdOK_Click()
{
    const HourGlass busy;
    // Alt+O leaves the focus in a box that is being typed in; what hangs on its choice comes first.
    ui.cmdOK->setFocus();
    MainSubs::tidyTexts(this);
    const QString notScrapped = "The tool was not scrapped.";
    // Before anything is checked: who wants to scrap a tool holds it in his hand, so the loan is over in any case.
    if (m_isOut) {
        if (!MainSubs::did(this, notScrapped, [this] { Lending::takeBack(m_toolId, m_loanShown); }))
            return;
        m_isOut = false;
        m_wasReturned = true;
        ListItem item = *theExplorer().selectedItem();
        item.setSubItem(5, {});
        item.icon = ItemIcon::toolInStock;
        theExplorer().patchSelectedItem(item);
    }
    if (!MainSubs::isFilled(ui.dbcEmp, "You must select an employee!")
        || !MainSubs::isFilled(ui.dbcJob, "You must enter a job or overhead number!")
        || !MainSubs::isFilled(ui.dbcScrapReason, "You must select a scrap reason!")
        || !MainSubs::did(this, notScrapped, [this] { scrapTool(); }))
        return;
    accept();
    ExplorerWindow &explorer = theExplorer();
    explorer.removeSelectedItem();
    if (explorer.itemCount() == 0)
        explorer.rebuildView();
    explorer.focusList();
}

void frmScrap::scrapTool()
{
    Lending::requireInCrib(m_toolId);
    const QString id = QString::number(m_toolId);
    const QString reason = reasonNumber(ui.dbcScrapReason->text());
    const qint64 written = execute(
        "INSERT INTO Scrap (ToolID,Type,TypeDescription,Manufacturer,PartNumber,Description,PricePer,Employee,"
        "ScrapDate,JobOrOH,Reason,LineItemTypeId,Location,Notes )"
        " SELECT Tools.ID, Tools.Type,Types.Description, Tools.Manufacturer, Tools.PartNumber, Tools.Description,"
        " Tools.PricePer,"
        + ui.dbcEmp->boundValue().toText() + "," + dateLiteral(Clock::now()) + "," + ui.dbcJob->boundValue().toText()
        + "," + reason + "," + ui.dbcJobType->boundValue().toText() + ",Tools.Location,'" + ui.txtNotes->toPlainText()
        + "' From Tools INNER JOIN Types on Tools.Type=Types.id WHERE Tools.ID=" + id);
    // What was not written must not be deleted.
    if (written == 0)
        throw std::runtime_error("The tool could not be entered among the scrapped tools and was not deleted.");
    execute("DELETE * FROM Tools WHERE ID =" + id);
}

// Closed without scrapping after the loan was ended: the list shows the tool as what it is now, back in the crib.
void frmScrap::reject()
{
    QDialog::reject();
    if (m_wasReturned)
        runUserAction([this] { MainSubs::showReturned(m_toolId); });
}
