#include "reports/frmConfigReports.h"

#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "reports/frmNewReport.h"

#include <QHeaderView>

QStringList frmConfigReports::modules() { return {"Tools Out", "All Tools", "Junk Tools"}; }

frmConfigReports::frmConfigReports() : QDialog(windowOwner())
{
    ui.setupUi(this);
    ui.dbgReport->setSelectionMode(QAbstractItemView::SingleSelection);
    ui.dbgReport->horizontalHeader()->setStretchLastSection(false);
    ui.dbcRtype->addItems(modules());
    onUserAction(ui.dbcRtype, &QComboBox::currentTextChanged, this, &frmConfigReports::dbcRtype_Change);
    onUserAction(ui.dbcRtype, &QComboBox::activated, this, &frmConfigReports::dbcRtype_Change);
    onUserAction(ui.cmdDefault, &QPushButton::clicked, this, &frmConfigReports::cmdDefault_Click);
    onUserAction(ui.cmdRemove, &QPushButton::clicked, this, &frmConfigReports::cmdRemove_Click);
    onUserAction(ui.cmdAdd, &QPushButton::clicked, this, &frmConfigReports::cmdAdd_Click);
    onUserAction(ui.cmdDone, &QPushButton::clicked, this, &QDialog::accept);
    dbcRtype_Change();
}

void frmConfigReports::dbcRtype_Change()
{
    const QString module = ui.dbcRtype->currentText();
    if (module.isEmpty())
        return;
    datReport =
        std::make_shared<Recordset>(openRecordset("Select * from Reports where Reports.Module = '" + module + "'"));
    ui.dbgReport->setSource(datReport,
                            {{"Name", "Name"},
                             {"Description", "Description"},
                             {"Default", "Default", BoundGrid::Column::YesNo},
                             {"OEM", "oem", BoundGrid::Column::YesNo}});
    ui.dbgReport->fitColumns();
    // The description takes what the others leave.
    ui.dbgReport->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
}

bool frmConfigReports::moveToSelectedRow(const QString &messageIfNone)
{
    const QList<int> &selected = ui.dbgReport->selectedRows();
    if (selected.isEmpty()) {
        msgBox({.text = messageIfNone, .caption = "Selection Error", .icon = QMessageBox::Information});
        return false;
    }
    datReport->setPosition(selected.first());
    return true;
}

void frmConfigReports::cmdDefault_Click()
{
    if (!moveToSelectedRow("Nothing Selected!."))
        return;
    const int row = datReport->position();
    if (msgBox({.text = "Set " + datReport->text(u"Name") + " As Default for " + ui.dbcRtype->currentText() + "?",
                .caption = "Set as Default",
                .icon = QMessageBox::Question,
                .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                .defaultButton = QMessageBox::Ok})
        == QMessageBox::Cancel)
        return;
    const auto setDefault = [this](int value) {
        datReport->edit();
        datReport->setField(u"Default", value);
        datReport->update();
    };
    Transaction transaction(Session::database());
    for (datReport->moveFirst(); !datReport->atEnd(); datReport->moveNext())
        setDefault(0);
    datReport->setPosition(row);
    setDefault(-1);
    transaction.commit();
    dbcRtype_Change();
    ui.dbgReport->selectRow(row);
}

void frmConfigReports::cmdRemove_Click()
{
    if (!moveToSelectedRow("Nothing Selected to Remove!."))
        return;
    if (msgBox({.text = "Delete This Record?",
                .caption = "Remove Report",
                .icon = QMessageBox::Question,
                .buttons = QMessageBox::Ok | QMessageBox::Cancel,
                .defaultButton = QMessageBox::Cancel})
        != QMessageBox::Ok)
        return;
    if (datReport->field(u"oem").toBool()) {
        msgBox(
            {.text = "You Cannot Delete OEM Reports!.", .caption = "Delete Error", .icon = QMessageBox::Information});
        return;
    }
    datReport->remove();
    dbcRtype_Change();
}

void frmConfigReports::cmdAdd_Click()
{
    frmNewReport::showModal();
    dbcRtype_Change();
}
