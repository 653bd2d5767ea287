#include "transactions/frmScrapRestore.h"

#include "common/ExplorerWindow.h"
#include "common/ItemId.h"
#include "common/ToolFields.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"
#include "transactions/AtomicChange.h"
#include "transactions/DialogSteps.h"

#include <QTimer>

frmScrapRestore::frmScrapRestore() : m_scrapId(ItemId::of(*theExplorer().selectedItem()).digits())
{
    theExplorer().narrowSelection();
    ui.setupUi(this);
    const Recordset scrap = openRecordset("Select * from Scrap where id=" + m_scrapId);
    ui.txtPart->setText(scrap.text(u"partNumber"));
    ui.txtDesc->setText(scrap.text(u"Description"));
    m_price = scrap.field(u"pricePer").toNumber();
    ui.txtCost->setText(Format::currency(m_price));
    ui.txtCost->installEventFilter(this);

    QStringList missing;
    m_typeId = scrap.field(u"Type").toInteger();
    const Recordset type = openRecordset("Select Description from Types where Types.id=" + QString::number(m_typeId));
    if (type.isEmpty())
        missing.append("Scrapped Tool Type no longer exist! Please select a new Tool Type.");
    else
        ui.txtToolType->setText(type.text(u"Description"));
    m_locationId = scrap.field(u"Location").toInteger();
    const Recordset location =
        openRecordset("Select Description from Locations where Locations.id=" + QString::number(m_locationId));
    if (location.isEmpty())
        missing.append("Scrapped Tool location no longer exist! Please select a new Tool Location.");
    else
        ui.txtLocation->setText(location.text(u"Description"));

    ui.cboMfg->setSource(openRecordset("Select distinct Manufacturer from Tools"), "Manufacturer", "Manufacturer");
    ui.cboMfg->setText(scrap.text(u"Manufacturer"));
    for (QLineEdit *box : findChildren<QLineEdit *>())
        box->setCursorPosition(0); // a text that is too long shows its beginning

    ui.txtCost->setFocus();

    onUserAction(ui.txtCost, &QLineEdit::editingFinished, this, &frmScrapRestore::txtCost_LostFocus);
    onUserAction(ui.cmdTreeType, &QPushButton::clicked, this, &frmScrapRestore::cmdTreeType_Click);
    onUserAction(ui.cmdTreeLoc, &QPushButton::clicked, this, &frmScrapRestore::cmdTreeLoc_Click);
    onUserAction(ui.cmdRestore, &QPushButton::clicked, this, &frmScrapRestore::cmdRestore_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    if (!missing.isEmpty())
        msgBox({.text = missing.join('\n'), .caption = "Restore criteria missing", .icon = QMessageBox::Information});
}

// The price is restored by its leading number, which a currency sign makes 0: whoever is about to change or to confirm
// it sees it as the number that will be read.
bool frmScrapRestore::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && ui.txtCost->text() == Format::currency(m_price)) {
        ui.txtCost->setText(Format::plainNumber(m_price));
        QTimer::singleShot(0, ui.txtCost, &QLineEdit::selectAll); // after a click has placed the cursor
    }
    return QDialog::eventFilter(watched, event);
}

void frmScrapRestore::txtCost_LostFocus()
{
    ui.txtCost->setText(Format::plainNumber(leadingNumber(ui.txtCost->text())));
}

QString frmScrapRestore::RestoreTool()
{
    const AtomicChange change = AtomicChange::attempt([this] {
        const Recordset scrap = openRecordset("Select ToolId from Scrap Where Id=" + m_scrapId);
        refuseUnless(!scrap.isEmpty(), "The scrapped tool was restored or deleted meanwhile.");
        const QString id = scrap.text(u"ToolId");
        refuseUnless(openRecordset("Select Id from Tools where id=" + id).isEmpty(),
                     "A tool with the number " + id + " is in the crib already.");
        execute("INSERT INTO tools (Id,type,manufacturer,partnumber, description,priceper,out,location)  VALUES(" + id
                + "," + QString::number(m_typeId) + "," + quoted(ui.cboMfg->text()) + "," + quoted(ui.txtPart->text())
                + "," + quoted(ui.txtDesc->text()) + "," + Format::plainNumber(leadingNumber(ui.txtCost->text()))
                + ",0," + QString::number(m_locationId) + ")");
        execute("Delete from Scrap where id=" + m_scrapId);
    });
    if (change.outcome == AtomicChange::Refused)
        theExplorer().listSelectedNode();
    return change.why;
}

void frmScrapRestore::cmdTreeType_Click()
{
    if (const auto picked = theExplorer().pickFolder("type", this)) {
        ui.txtToolType->setText(picked->path);
        m_typeId = picked->id;
    }
}

void frmScrapRestore::cmdTreeLoc_Click()
{
    if (const auto picked = theExplorer().pickFolder("location", this)) {
        ui.txtLocation->setText(picked->path);
        m_locationId = picked->id;
    }
}

void frmScrapRestore::cmdRestore_Click()
{
    const HourGlass busy;
    MainSubs::tidyTexts(this);
    if (!MainSubs::ValidData(ui.txtLocation->text(), ui.txtToolType->text(), ui.cboMfg->text(), ui.txtDesc->text()))
        return;
    const QString problem = RestoreTool();
    if (!problem.isEmpty()) {
        msgBox({.text = "Restore failed due to:" + problem});
        return;
    }
    msgBox({.text = "Tool was successfully restored", .caption = "Restore Tool"});
    accept();
    theExplorer().rebuildView();
}
