#include "platform/reportcontrol/PreviewWindow.h"

#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/gui/SaveDialog.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "platform/reportcontrol/Printing.h"
#include "platform/reportcontrol/RunProgress.h"
#include "platform/reportengine/Report.h"
#include "platform/text/Numbers.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <cmath>

namespace {

constexpr int millisecondsInASlice = 20;
const QString fitWidth = QStringLiteral("Fit Width");
const QString fitPage = QStringLiteral("Fit Page");

}

PreviewWindow::PreviewWindow(std::unique_ptr<Report> report, ErrorRoutine errorRoutine, QWidget *owner)
    : QMainWindow(owner), m_report(std::move(report)), m_errorRoutine(std::move(errorRoutine))
{
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    connectCommands();
    ui.pages->setReport(m_report.get());
    ui.pages->setFocus();
    showPageCount();
    onUserAction(&m_layoutTimer, &QTimer::timeout, this, &PreviewWindow::layOutFurtherPages);
    m_layoutTimer.start();
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::connectCommands()
{
    const struct {
        QAction *entry;
        std::function<void()> command;
    } commands[] = {
        {ui.mnuFilePrint, [this] { mnuFilePrint_Click(); }},
        {ui.mnuFilePdf, [this] { mnuFilePdf_Click(); }},
        {ui.mnuFileCsv, [this] { mnuFileCsv_Click(); }},
        {ui.mnuFileClose, [this] { close(); }},
        {ui.mnuEditFind, [this] { edit(ui.txtFind); }},
        {ui.mnuEditFindNext, [this] { find(1); }},
        {ui.mnuEditFindPrevious, [this] { find(-1); }},
        {ui.mnuViewZoomIn, [this] { ui.pages->setZoom(ui.pages->zoom() * PageView::zoomStep); }},
        {ui.mnuViewZoomOut, [this] { ui.pages->setZoom(ui.pages->zoom() / PageView::zoomStep); }},
        {ui.mnuViewActualSize, [this] { ui.pages->setZoom(1); }},
        {ui.mnuViewFitWidth, [this] { ui.pages->setFit(PageView::FitWidth); }},
        {ui.mnuViewFitPage, [this] { ui.pages->setFit(PageView::FitPage); }},
        {ui.mnuGoFirst, [this] { ui.pages->goToPage(0); }},
        {ui.mnuGoPrevious, [this] { ui.pages->goToPage(ui.pages->currentPage() - 1); }},
        {ui.mnuGoNext, [this] { ui.pages->goToPage(ui.pages->currentPage() + 1); }},
        {ui.mnuGoLast, [this] { mnuGoLast_Click(); }},
        {ui.mnuGoPage, [this] { edit(ui.fpPage); }},
    };
    for (const auto &[entry, command] : commands)
        onUserAction(entry, &QAction::triggered, command);
    ui.mnuFileClose->setShortcuts({ui.mnuFileClose->shortcut(), Qt::Key_Escape});
    ui.mnuViewZoomIn->setShortcuts({ui.mnuViewZoomIn->shortcut(), Qt::CTRL | Qt::Key_Equal});
    const struct {
        QToolButton *button;
        QAction *entry;
        const char *picture;
    } buttons[] = {
        {ui.cmdFirst, ui.mnuGoFirst, "page-first"},
        {ui.cmdPrevious, ui.mnuGoPrevious, "page-previous"},
        {ui.cmdNext, ui.mnuGoNext, "page-next"},
        {ui.cmdLast, ui.mnuGoLast, "page-last"},
    };
    for (const auto &[button, entry, picture] : buttons) {
        entry->setIcon(Icons::icon(picture));
        button->setDefaultAction(entry);
    }

    onUserAction(ui.pages, &PageView::currentPageChanged, this, &PreviewWindow::showCurrentPage);
    onUserAction(ui.pages, &PageView::zoomChanged, this, &PreviewWindow::showZoom);
    onUserAction(ui.fpPage, &QSpinBox::valueChanged, this, &PreviewWindow::fpPage_Change);
    onUserAction(ui.cboZoom, &QComboBox::activated, this, &PreviewWindow::cboZoom_Change);
    onUserAction(ui.cboZoom->lineEdit(), &QLineEdit::returnPressed, this, &PreviewWindow::cboZoom_Change);
    onUserAction(ui.txtFind, &QLineEdit::returnPressed, [this] { find(1); });
}

void PreviewWindow::layOutFurtherPages()
{
    if (m_report->isLaidOut()) {
        m_layoutTimer.stop();
    } else if (const int resultCode = m_report->layout(millisecondsInASlice)) {
        m_layoutTimer.stop();
        m_errorRoutine(resultCode, m_report->lastDetail());
    }
    showPageCount();
}

bool PreviewWindow::perform(const QString &title, const std::function<int(RunProgress &)> &step)
{
    // A step must not begin within another one.
    m_layoutTimer.stop();
    int resultCode = ResultCode::ok;
    {
        const HourGlass busy;
        RunProgress progress(*m_report, title, this);
        resultCode = step(progress);
    }
    showPageCount();
    if (!m_report->isLaidOut())
        m_layoutTimer.start();
    if (resultCode != ResultCode::ok && resultCode != ResultCode::cancelled)
        m_errorRoutine(resultCode, m_report->lastDetail());
    return resultCode == ResultCode::ok;
}

bool PreviewWindow::layOutAllPages(const QString &title)
{
    return m_report->isLaidOut() || perform(title, [this](RunProgress &) { return m_report->layout(); });
}

void PreviewWindow::showPageCount()
{
    const int pages = m_report->pageCount();
    ui.pages->updatePages();
    ui.fpPage->setMaximum(pages);
    ui.lblPages->setText(QStringLiteral("of %1%2").arg(pages).arg(m_report->isLaidOut() ? "" : "+"));
}

void PreviewWindow::showCurrentPage()
{
    const QSignalBlocker quiet(ui.fpPage);
    ui.fpPage->setValue(ui.pages->currentPage() + 1);
}

void PreviewWindow::fpPage_Change() { ui.pages->goToPage(ui.fpPage->value() - 1); }

void PreviewWindow::mnuGoLast_Click()
{
    layOutAllPages("Preparing the pages");
    ui.pages->goToPage(m_report->pageCount() - 1);
}

void PreviewWindow::showZoom()
{
    const PageView::Fit fit = ui.pages->fit();
    const QString percent = QStringLiteral("%1 %").arg(std::lround(ui.pages->zoom() * 100));
    ui.cboZoom->setEditText(fit == PageView::FitWidth ? fitWidth : fit == PageView::FitPage ? fitPage : percent);
}

void PreviewWindow::cboZoom_Change()
{
    const QString text = ui.cboZoom->currentText();
    if (text == fitWidth)
        ui.pages->setFit(PageView::FitWidth);
    else if (text == fitPage)
        ui.pages->setFit(PageView::FitPage);
    else if (const double percent = leadingNumber(text); percent > 0)
        ui.pages->setZoom(percent / 100);
    showZoom();
    ui.pages->setFocus();
}

template<typename Box>
void PreviewWindow::edit(Box *box)
{
    box->setFocus();
    box->selectAll();
}

void PreviewWindow::find(int direction)
{
    if (ui.txtFind->text().isEmpty()) {
        edit(ui.txtFind);
        return;
    }
    if (ui.txtFind->text() != m_soughtText && !findPlaces())
        return;
    if (m_placeCount == 0) {
        ui.lblFound->setText("Not found");
        return;
    }
    if (m_place >= 0)
        m_place = (m_place + direction + m_placeCount) % m_placeCount;
    else
        m_place = firstPlace(direction);
    ui.pages->goToPlace(m_place);
    ui.lblFound->setText(QStringLiteral("%1 of %2").arg(m_place + 1).arg(m_placeCount));
}

bool PreviewWindow::findPlaces()
{
    const QString text = ui.txtFind->text();
    const QString title = "Looking for \"" + text + '"';
    QList<PageView::Place> places;
    const bool searched = layOutAllPages(title) && perform(title, [&](RunProgress &progress) {
                              const int pages = m_report->pageCount();
                              for (int page = 0; page < pages; ++page) {
                                  for (const QRectF &rect : m_report->find(text, page))
                                      places.append({page, rect});
                                  progress.show(double(page + 1) / pages);
                                  if (progress.isCancelled())
                                      return int(ResultCode::cancelled);
                              }
                              return int(ResultCode::ok);
                          });
    if (!searched)
        return false;
    m_soughtText = text;
    m_placeCount = int(places.size());
    m_place = -1;
    ui.pages->setPlaces(places);
    return true;
}

// The search begins on the page that is looked at.
int PreviewWindow::firstPlace(int direction) const
{
    const int number = ui.pages->firstPlaceFrom(ui.pages->currentPage());
    return direction > 0 ? number % m_placeCount : (number + m_placeCount - 1) % m_placeCount;
}

void PreviewWindow::mnuFilePrint_Click()
{
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        m_errorRoutine(ResultCode::noDefaultPrinter, {});
        return;
    }
    if (!layOutAllPages("Preparing the pages"))
        return;
    QPrinter printer(QPrinter::HighResolution);
    setUpPages(printer, *m_report);
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setMinMax(1, m_report->pageCount());
    dialog.setFromTo(1, m_report->pageCount());
    if (execOver(dialog) != QDialog::Accepted)
        return;
    // The dialog puts the printer's own paper in place of one that it does not list.
    if (m_report->pageLayout().pageSize().id() == QPageSize::Custom)
        setUpPages(printer, *m_report);
    perform("Printing", [&](RunProgress &) { return printPages(printer, *m_report, ui.pages->currentPage()); });
}

void PreviewWindow::mnuFilePdf_Click()
{
    const QString file = SaveDialog{"Save as PDF", windowTitle(), "PDF files (*.pdf)", ".pdf"}.ask(this);
    if (!file.isEmpty())
        perform("Writing " + file, [&](RunProgress &) { return m_report->writePdf(file); });
}

void PreviewWindow::mnuFileCsv_Click()
{
    const QString file = SaveDialog{"Save Records as CSV", windowTitle(), "CSV files (*.csv)", ".csv"}.ask(this);
    if (!file.isEmpty())
        perform("Writing " + file, [&](RunProgress &) { return m_report->writeCsv(file); });
}
