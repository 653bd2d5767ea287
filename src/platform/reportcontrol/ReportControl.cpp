#include "platform/reportcontrol/ReportControl.h"

#include "platform/report/Report.h"
#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/Printing.h"
#include "platform/reportcontrol/RunProgress.h"

#include <QPrinterInfo>
#include <QScopeGuard>

ReportControl::ReportControl(Database &database, QWidget *owner) : QObject(owner), m_database(database), m_owner(owner)
{
}

int ReportControl::print()
{
    if (destination < toPreview || destination > toFile)
        return ResultCode::invalidDestination;
    if (m_isBusy)
        return ResultCode::jobBusy;
    m_isBusy = true;
    const auto end = qScopeGuard([this] { m_isBusy = false; });

    auto report = std::make_unique<Report>(&m_database);
    const int resultCode = run(*report);
    if (resultCode == ResultCode::ok && destination == toPreview)
        showPreview(std::move(report));
    return resultCode;
}

PreviewWindow *ReportControl::preview() const { return m_preview; }

int ReportControl::run(Report &report) const
{
    const RunProgress progress(report, windowTitle, m_owner);
    if (const int resultCode = report.open(reportFile, selectionFormula, {{"title", windowTitle}}))
        return resultCode;
    switch (destination) {
    case toPrinter:
        return printOn(QPrinterInfo::defaultPrinter(), report);
    case toFile:
        return report.write(outputFile, false);
    default:
        // The first pages are enough to begin with.
        return report.layout(1);
    }
}

void ReportControl::showPreview(std::unique_ptr<Report> report)
{
    if (m_preview)
        m_preview->close();
    m_preview = new PreviewWindow(std::move(report), errorRoutine, m_owner);
    m_preview->setWindowTitle(windowTitle);
    const QWidget *main = m_owner;
    while (main->parentWidget())
        main = main->parentWidget();
    m_preview->resize(windowWidth, windowHeight);
    m_preview->move(main->pos() + QPoint(windowLeft, windowTop));
    m_preview->show();
}
