#include "catalogue/frmToolNewEdit.h"

#include "catalogue/FolderKind.h"
#include "common/ExplorerView.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "platform/gui/Handler.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/WindowOwner.h"
#include "platform/text/Format.h"
#include "transactions/KeyFilter.h"
#include "transactions/MainSubs.h"

#include <QLineEdit>

namespace {

constexpr int longestManufacturer = 25;
// More equal tools than this are more likely a slip than a delivery.
constexpr int usualQuantity = 100;

}

bool frmToolNewEdit::Startup(const QString &mode, bool fromType, bool fromLocation, int toolId, int typeId,
                             int locationId, const QString &typeText, const QString &locationText)
{
    frmToolNewEdit editor(mode, toolId);
    if (editor.m_isNew) {
        if (fromLocation)
            editor.setLocation(locationId, locationText);
        else if (fromType)
            editor.setType(typeId, typeText);
        editor.focusFirstMissing();
    }
    editor.exec();
    return editor.m_saved;
}

frmToolNewEdit::frmToolNewEdit(const QString &mode, int toolId)
    : QDialog(windowOwner()), m_isNew(mode == "New"), m_toolId(toolId)
{
    ui.setupUi(this);
    KeyFilter::watch(ui.txtDescription);
    KeyFilter::watch(ui.txtPartNumber);
    KeyFilter::watch(ui.cboMan, [this](QChar typed) {
        const bool isFull = ui.cboMan->currentText().trimmed().size() >= longestManufacturer;
        return isFull && typed.isPrint() && typed != '%';
    });

    loadManufacturers();
    if (!m_isNew)
        loadTool();
    onUserAction(ui.cmdTreeType, &QPushButton::clicked, this, &frmToolNewEdit::cmdTreeType_Click);
    onUserAction(ui.cmdTreeLoc, &QPushButton::clicked, this, &frmToolNewEdit::cmdTreeLoc_Click);
    onUserAction(ui.cboMan, &BoundCombo::editTextChanged, this, &frmToolNewEdit::cboMan_Change);
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &frmToolNewEdit::cmdOK_Click);
    onUserAction(ui.cmdOKNew, &QPushButton::clicked, this, &frmToolNewEdit::cmdOKNew_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmToolNewEdit::setType(int id, const QString &text)
{
    ui.txtType->setText(text);
    ui.txtTypeId->setText(QString::number(id));
}

void frmToolNewEdit::setLocation(int id, const QString &text)
{
    ui.txtLocation->setText(text);
    ui.txtLocationId->setText(QString::number(id));
}

void frmToolNewEdit::loadManufacturers()
{
    ui.cboMan->setSource(openRecordset("Select distinct Manufacturer from Tools"), "Manufacturer", "Manufacturer");
}

void frmToolNewEdit::loadTool()
{
    setWindowTitle("Edit Tool");
    for (QWidget *control : std::initializer_list<QWidget *>{ui.cmdOKNew, ui.lblQty, ui.fpQuantity})
        control->hide();
    ui.cmdTreeType->setEnabled(false);
    ui.cmdTreeLoc->setEnabled(false);
    ui.cboMan->setFocus();

    const Recordset tool = openRecordset("SELECT * FROM tools WHERE ID=" + QString::number(m_toolId));
    const int type = int(tool.field(u"Type").toInteger());
    const int location = int(tool.field(u"Location").toInteger());
    setType(type, FolderKind::type.description(type));
    setLocation(location, FolderKind::location.description(location));
    ui.cboMan->setText(tool.text(u"Manufacturer"));
    ui.txtPartNumber->setText(tool.text(u"Partnumber"));
    ui.txtDescription->setText(tool.text(u"Description"));
    for (QLineEdit *box : findChildren<QLineEdit *>())
        box->setCursorPosition(0); // a text that is too long shows its beginning
    // A price that the suite has set is shown as it is, whatever it is: saving another field must not change it.
    const double price = tool.field(u"PricePer").toNumber();
    ui.fpCost->setDecimals(qRound64(price * 10000) % 100 ? 4 : 2);
    ui.fpCost->setRange(qMin(price, ui.fpCost->minimum()), qMax(price, ui.fpCost->maximum()));
    ui.fpCost->setValue(price);
}

bool frmToolNewEdit::ValidData()
{
    if (MainSubs::ValidData(ui.txtLocation->text(), ui.txtType->text(), ui.cboMan->text(), ui.txtDescription->text()))
        return true;
    focusFirstMissing();
    return false;
}

bool frmToolNewEdit::SaveRecord()
{
    const HourGlass busy;
    const QString manufacturer = quoted(ui.cboMan->text());
    const QString partNumber = quoted(ui.txtPartNumber->text());
    const QString description = quoted(ui.txtDescription->text());
    const QString cost = Format::plainNumber(ui.fpCost->value());
    try {
        if (m_isNew) {
            const QString statement =
                "INSERT INTO tools (type,manufacturer,partnumber, description,priceper,out,location) "
                " VALUES("
                + ui.txtTypeId->text() + "," + manufacturer + "," + partNumber + "," + description + "," + cost + ",0,"
                + ui.txtLocationId->text() + ")";
            for (int added = 0; added < ui.fpQuantity->value(); ++added)
                execute(statement);
        } else {
            execute("UPDATE tools SET  manufacturer=" + manufacturer + ", partnumber=" + partNumber
                    + ", description=" + description + ", priceper=" + cost + " WHERE id=" + QString::number(m_toolId));
        }
    } catch (const EngineError &error) {
        inform("Unable to save data.\n\nError: " + error.text());
        return false;
    }
    m_saved = true;
    theExplorer().listSelectedNode();
    return true;
}

void frmToolNewEdit::focusFirstMissing()
{
    if (ui.txtLocation->text().isEmpty())
        ui.cmdTreeLoc->setFocus();
    else if (ui.txtType->text().isEmpty())
        ui.cmdTreeType->setFocus();
    else
        ui.txtDescription->setFocus();
}

bool frmToolNewEdit::confirmsQuantity()
{
    const int quantity = ui.fpQuantity->value();
    return !m_isNew || quantity <= usualQuantity
        || msgBox({.text = QStringLiteral("You are about to add %1 tools. Are you sure?").arg(quantity),
                   .icon = QMessageBox::Question,
                   .buttons = QMessageBox::Yes | QMessageBox::No,
                   .defaultButton = QMessageBox::No})
        == QMessageBox::Yes;
}

bool frmToolNewEdit::save() { return ValidData() && confirmsQuantity() && SaveRecord(); }

void frmToolNewEdit::cmdTreeType_Click()
{
    if (const auto picked = theExplorer().pickFolder("type", this))
        setType(picked->id, picked->path);
}

void frmToolNewEdit::cmdTreeLoc_Click()
{
    if (const auto picked = theExplorer().pickFolder("location", this))
        setLocation(picked->id, picked->path);
}

void frmToolNewEdit::cboMan_Change(const QString &text)
{
    if (text.size() <= longestManufacturer || text.trimmed().size() < longestManufacturer)
        return;
    QLineEdit *box = ui.cboMan->lineEdit();
    const int cursor = box->cursorPosition();
    box->setText(text.left(longestManufacturer));
    box->setCursorPosition(cursor);
}

void frmToolNewEdit::cmdOK_Click()
{
    if (save())
        accept();
}

void frmToolNewEdit::cmdOKNew_Click()
{
    if (!save())
        return;
    ui.fpQuantity->setValue(1);
    ui.fpCost->setValue(0);
    ui.txtDescription->clear();
    ui.txtPartNumber->clear();
    loadManufacturers();
    // The folder that the tree stands on stays.
    const QString tree = theExplorer().TreeMode();
    for (QLineEdit *box : {ui.txtType, ui.txtTypeId})
        if (tree != "type")
            box->clear();
    for (QLineEdit *box : {ui.txtLocation, ui.txtLocationId})
        if (tree != "location")
            box->clear();
    focusFirstMissing();
}
