#include "catalogue/frmToolNewEdit.h"

#include "catalogue/FolderKind.h"
#include "common/ExplorerWindow.h"
#include "common/ToolFields.h"
#include "db/Literals.h"
#include "db/Schema.h"
#include "db/Session.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "platform/text/Format.h"
#include "transactions/AtomicChange.h"
#include "transactions/DialogSteps.h"
#include "transactions/KeyFilter.h"

#include <QLineEdit>
#include <QProgressDialog>

namespace {

// Fewer are added before a bar is seen.
constexpr int manyTools = 1000;
constexpr int toolsBetweenLooksAtCancel = 32;

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
    execOver(editor);
    return editor.m_saved;
}

frmToolNewEdit::frmToolNewEdit(const QString &mode, int toolId)
    : QDialog(windowOwner()), m_isNew(mode == "New"), m_toolId(toolId)
{
    ui.setupUi(this);
    KeyFilter::watch(ui.txtDescription);
    KeyFilter::watch(ui.txtPartNumber);
    KeyFilter::watch(ui.cboMan, [this](QChar typed) {
        // What is selected gives way to the typed character.
        const qsizetype selected = ui.cboMan->lineEdit()->selectedText().size();
        const bool isFull = ui.cboMan->currentText().trimmed().size() - selected >= Schema::longestTypedManufacturer;
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

    const Recordset tool = m_tool.load(m_toolId);
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
    MainSubs::tidyTexts(this);
    if (MainSubs::ValidData(ui.txtLocation->text(), ui.txtType->text(), ui.cboMan->text(), ui.txtDescription->text()))
        return true;
    focusFirstMissing();
    return false;
}

bool frmToolNewEdit::SaveRecord()
{
    const HourGlass busy;
    const AtomicChange change = m_isNew ? AtomicChange::attempt([this] { addTools(); }) : changeTool();
    if (change.outcome != AtomicChange::Done && !change.why.isEmpty())
        inform("Unable to save data.\n\nError: " + change.why);
    m_saved = m_saved || change.outcome == AtomicChange::Done;
    if (change.outcome != AtomicChange::Failed)
        theExplorer().listSelectedNode();
    return change.outcome == AtomicChange::Done;
}

void frmToolNewEdit::addTools()
{
    const int quantity = ui.fpQuantity->value();
    const QString statement = "INSERT INTO tools (type,manufacturer,partnumber, description,priceper,out,location) "
                              " VALUES("
        + ui.txtTypeId->text() + "," + quoted(ui.cboMan->text()) + "," + quoted(ui.txtPartNumber->text()) + ","
        + quoted(ui.txtDescription->text()) + "," + Format::plainNumber(ui.fpCost->value()) + ",0,"
        + ui.txtLocationId->text() + ")";
    QProgressDialog progress("Adding tools...", "Cancel", 0, quantity, this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    for (int added = 0; added < quantity; ++added) {
        execute(statement);
        if (added == 0) {
            const Recordset tools = openRecordset("Select ID from Tools order by ID desc");
            const qint64 left = Schema::highestToolNumber - tools.field(u"ID").toInteger() + 1;
            refuseUnless(quantity <= left,
                         QStringLiteral("The numbers of tools end at %1; %2 can be added.")
                             .arg(Schema::highestToolNumber)
                             .arg(qMax(0, left)));
        }
        if (quantity >= manyTools && added % toolsBetweenLooksAtCancel == 0)
            progress.setValue(added);
        refuseUnless(!progress.wasCanceled(), {});
    }
}

AtomicChange frmToolNewEdit::changeTool()
{
    return m_tool.save("The tool was deleted or scrapped meanwhile.", [this] {
        execute("UPDATE tools SET  manufacturer=" + quoted(ui.cboMan->text()) + ", partnumber="
                + quoted(ui.txtPartNumber->text()) + ", description=" + quoted(ui.txtDescription->text())
                + ", priceper=" + Format::plainNumber(ui.fpCost->value()) + " WHERE id=" + QString::number(m_toolId));
    });
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

bool frmToolNewEdit::save()
{
    if (!ValidData() || !SaveRecord())
        return false;
    if (m_isNew && ui.fpQuantity->value() < 1)
        inform("The quantity is 0: no tool was added.");
    return true;
}

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
    if (text.size() <= Schema::longestTypedManufacturer || text.trimmed().size() < Schema::longestTypedManufacturer)
        return;
    QLineEdit *box = ui.cboMan->lineEdit();
    const int cursor = box->cursorPosition();
    box->setText(text.left(Schema::longestTypedManufacturer));
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
