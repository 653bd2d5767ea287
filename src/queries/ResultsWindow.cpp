#include "queries/ResultsWindow.h"

#include "common/MainFrame.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/SaveDialog.h"
#include "platform/gui/UserAction.h"
#include "platform/reportcontrol/ReportControl.h"
#include "platform/reportengine/OutputFile.h"
#include "platform/reportengine/ResultCode.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"
#include "queries/ResultsKind.h"
#include "reports/ReportRun.h"

#include <QAction>
#include <QHash>
#include <QHeaderView>
#include <QPointer>
#include <QScreen>

#include <cmath>
#include <numeric>

namespace {

const QString priceField = "PricePer";

QHash<const ResultsKind *, QPointer<ResultsWindow>> openWindows;

bool hasField(const Recordset &rows, const QString &name)
{
    for (int column = 0; column < rows.fieldCount(); ++column)
        if (rows.fieldName(column).compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

/// In the ten-thousandths of money, so that it is exact however many there are.
double sumOfPrices(const Recordset &rows, const QList<int> &numbers)
{
    constexpr double units = 10'000;
    const int price = rows.fieldIndex(priceField);
    double sum = 0;
    for (const int row : numbers)
        sum += std::round(rows.at(row, price).toNumber() * units);
    return sum / units;
}

/// "3 selected, $12.50": how many, and what they cost where they have prices.
QString total(const Recordset &rows, const QList<int> &numbers, const char *what)
{
    const QString count = QString::number(numbers.size()) + what;
    return hasField(rows, priceField) ? count + ", " + Format::currency(sumOfPrices(rows, numbers)) : count;
}

QHash<qint64, QString> namesByNumber(const char *statement)
{
    QHash<qint64, QString> names;
    for (Recordset rows = openRecordset(statement); !rows.atEnd(); rows.moveNext())
        names.insert(rows.field(u"ID").toInteger(), rows.text(u"Description"));
    return names;
}

QList<BoundGrid::Column> gridColumns(const ResultsKind &kind, const Recordset &rows)
{
    QList<BoundGrid::Column> columns;
    for (const ResultsColumn &column : kind.columns) {
        BoundGrid::Column shown{column.heading, column.field, column.form};
        if (column.standIn && !hasField(rows, column.field)) {
            shown.field = column.standIn;
            if (column.standInNames)
                shown.names = namesByNumber(column.standInNames);
        }
        columns.append(shown);
    }
    return columns;
}

}

void ResultsWindow::open(const ResultsKind &kind, const Query &query, Recordset found)
{
    const HourGlass busy;
    if (ResultsWindow *before = opened(kind))
        before->close();
    auto *window = new ResultsWindow(kind, query, std::move(found));
    openWindows[&kind] = window;
    window->show();
    window->chooseDefaultTemplate();
    // A message about it belonged to the window that was active before.
    window->activateWindow();
}

ResultsWindow *ResultsWindow::opened(const ResultsKind &kind)
{
    ResultsWindow *window = openWindows.value(&kind);
    return window && window->isVisible() ? window : nullptr;
}

ResultsWindow::ResultsWindow(const ResultsKind &kind, const Query &query, Recordset found)
    : QDialog(&theMainFrame(), Qt::Window),
      m_kind(kind),
      m_templates(query.byLocation && kind.templatesByLocation ? *kind.templatesByLocation : kind.templates),
      m_query(query),
      datReports(std::make_shared<Recordset>(openRecordset(m_templates.statement))),
      crpMain(new ReportControl(Session::database(), this))
{
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(kind.name);
    setWindowTitle(kind.caption);
    ui.dbgCustFound->setObjectName(kind.grid);
    crpMain->setObjectName("crpMain");
    ui.Label1->setText(QString::number(found.recordCount()) + "  Records Found Matching Query.");
    showRows(std::move(found));
    ui.dbgCustFound->fitColumns();
    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
    ui.dbcReport->setSource(datReports, "Name", "Description");
    dbcReport_Change();

    onUserAction(ui.dbcReport, &QComboBox::currentTextChanged, this, &ResultsWindow::dbcReport_Change);
    onUserAction(ui.dbcReport, &BoundCombo::chosen, this, &ResultsWindow::dbcReport_Change);
    onUserAction(ui.dbgCustFound, &BoundGrid::headingClicked, this, &ResultsWindow::headingClicked);
    onUserAction(ui.dbgCustFound, &BoundGrid::rowsSelected, this, &ResultsWindow::showTotals);
    auto *save = new QAction("Save as CSV...", this);
    save->setShortcut(QKeySequence::Save);
    onUserAction(save, &QAction::triggered, this, &ResultsWindow::saveRows);
    addAction(save);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    onUserAction(ui.cmdPrintScr, &QPushButton::clicked, this, &ResultsWindow::cmdPrintScr_Click);
    onUserAction(ui.cmdPrintSel, &QPushButton::clicked, this, &ResultsWindow::cmdPrintSel_Click);
    onUserAction(ui.cmdRedo, &QPushButton::clicked, this, &ResultsWindow::cmdRedo_Click);
    onUserAction(ui.cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ResultsWindow::showRows(Recordset rows)
{
    const QList<BoundGrid::Column> columns = gridColumns(m_kind, rows);
    ui.dbgCustFound->setSource(std::make_shared<Recordset>(std::move(rows)), columns);
    QList<int> all(ui.dbgCustFound->rows().recordCount());
    std::iota(all.begin(), all.end(), 0);
    m_totalShown = total(ui.dbgCustFound->rows(), all, all.size() == 1 ? " row shown" : " rows shown");
    showTotals();
}

void ResultsWindow::showTotals()
{
    QString text = m_totalShown;
    if (const QList<int> &selected = ui.dbgCustFound->selectedRows(); !selected.isEmpty())
        text += "; " + total(ui.dbgCustFound->rows(), selected, " selected");
    ui.lblTotals->setText(text);
}

void ResultsWindow::saveRows()
{
    const QString path = SaveDialog{"Save Rows as CSV", windowTitle(), "CSV files (*.csv)", ".csv"}.ask(this);
    if (path.isEmpty())
        return;
    const HourGlass busy;
    try {
        OutputFile file(path, true);
        ui.dbgCustFound->writeCsv(file.file());
        file.commit();
    } catch (const ReportError &error) {
        msgBox({.text = "The rows could not be saved.", .icon = QMessageBox::Critical, .detail = error.detail()});
    }
}

void ResultsWindow::chooseDefaultTemplate()
{
    Recordset all = openRecordset("Select * from Reports");
    if (!all.findFirst(m_templates.defaultOne)) {
        msgBox({.text = "You do not have a Default Report specified for this Module or the Default Report is missing!",
                .caption = "No Default Report",
                .icon = QMessageBox::Critical});
        return;
    }
    ui.dbcReport->setText(all.text(u"Name"));
    dbcReport_Change();
}

void ResultsWindow::dbcReport_Change()
{
    ui.lbldesc->setText(ui.dbcReport->boundValue().toText());
    // Whatever stands there: printing says when there is no such report.
    const bool isChosen = !ui.dbcReport->currentText().trimmed().isEmpty();
    ui.cmdPrintSel->setEnabled(isChosen);
    ui.cmdPrintScr->setEnabled(isChosen);
}

void ResultsWindow::headingClicked(int column)
{
    // The heading has marked itself already, whatever comes of the click.
    showOrder();
    const ResultsColumn &clicked = m_kind.columns[size_t(column)];
    if (!clicked.sort)
        return;
    const HourGlass busy;
    const bool descending = clicked.sortDescending && m_sortedColumn == column && !m_descending;
    showRows(openRecordset(m_query.findsql + (descending ? clicked.sortDescending : clicked.sort)));
    m_sortedColumn = column;
    m_descending = descending;
    showOrder();
}

void ResultsWindow::showOrder()
{
    QHeaderView *headings = ui.dbgCustFound->horizontalHeader();
    headings->setSortIndicatorShown(m_sortedColumn >= 0);
    headings->setSortIndicator(m_sortedColumn, m_descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ResultsWindow::cmdPrintScr_Click() { printReport(*crpMain, {"Query Results", templateFile(), m_query.findCrp}); }

void ResultsWindow::cmdPrintSel_Click()
{
    const QList<int> &selected = ui.dbgCustFound->selectedRows();
    if (selected.isEmpty()) {
        inform("No Records Selected!");
        return;
    }
    const QString file = templateFile();
    QString formula;
    try {
        for (const int row : selected)
            formula += (formula.isEmpty() ? m_kind.firstRow : m_kind.furtherRow) + QString::number(recordNumber(row));
    } catch (const NumberError &error) {
        msgBox({.text = error.what(),
                .icon = QMessageBox::Critical,
                .detail = "Selected records are printed by their numbers, up to 32767. Report Shown prints all records "
                          "found."});
        return;
    }
    printReport(*crpMain, {"Selected Records", file, formula});
}

QString ResultsWindow::templateFile()
{
    const bool found = datReports->findFirst(m_templates.named + ui.dbcReport->currentText() + "'");
    return found ? datReports->text(u"FileName") : QString();
}

qint16 ResultsWindow::recordNumber(int row) const
{
    const Recordset &rows = ui.dbgCustFound->rows();
    const bool standIn = m_kind.numberStandIn && !hasField(rows, m_kind.number);
    const QString field(standIn ? m_kind.numberStandIn : m_kind.number);
    const Value number = rows.at(row, rows.fieldIndex(field));
    if (number.isNull())
        throw NumberError(QStringLiteral("A selected record has no %1.").arg(field));
    return toInteger(number.toText());
}

void ResultsWindow::cmdRedo_Click()
{
    const QueryKind *form = m_query.form;
    close();
    if (form)
        QueryForm::showModal(*form);
}
