#include "reports/frmImportSelected.h"

#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "reports/frmConfigReports.h"

frmImportSelected::frmImportSelected(const QString &fileName) : QDialog(windowOwner())
{
    ui.setupUi(this);
    ui.lblRpt->setText(fileName);
    ui.cboRtype->addItems(frmConfigReports::modules());
    ui.cboRtype->setCurrentIndex(-1);
    onUserAction(ui.cmdImport, &QPushButton::clicked, this, &frmImportSelected::cmdImport_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmImportSelected::cmdImport_Click()
{
    const struct {
        QString text;
        QWidget *box;
        const char *problem;
    } required[] = {
        {ui.cboRtype->currentText(), ui.cboRtype, "You must enter a Report Type!"},
        {ui.txtName->text().simplified(), ui.txtName, "You must enter a Name!"},
        {ui.txtDesc->text().simplified(), ui.txtDesc, "You must enter a Description!"},
    };
    for (const auto &[text, box, problem] : required) {
        if (text.isEmpty()) {
            inform(problem);
            box->setFocus();
            return;
        }
    }
    Recordset datReports = openRecordset("Select * from Reports");
    datReports.addNew();
    datReports.setField(u"Name", required[1].text);
    datReports.setField(u"Description", required[2].text);
    datReports.setField(u"Module", ui.cboRtype->currentText());
    datReports.setField(u"FileName", ui.lblRpt->text());
    datReports.update();
    accept();
}
