#include "platform/reportcontrol/ReportControl.h"

#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/Printing.h"
#include "platform/reportcontrol/RunProgress.h"
#include "platform/reportengine/Report.h"

#include <QEvent>
#include <QPrinterInfo>
#include <QScopeGuard>

ReportControl::ReportControl(Database &database, QWidget *owner) : QObject(owner), m_database(database), m_owner(owner)
{
    owner->installEventFilter(this);
}

int ReportControl::print()
{
    m_lastDetail.clear();
    if (destination < toPreview || destination > toFile)
        return ResultCode::invalidDestination;
    if (m_isBusy)
        return ResultCode::jobBusy;
    m_isBusy = true;
    const auto end = qScopeGuard([this] { m_isBusy = false; });

    auto report = std::make_unique<Report>(&m_database);
    const int resultCode = run(*report);
    m_lastDetail = report->lastDetail();
    if (resultCode == ResultCode::ok && destination == toPreview)
        showPreview(std::move(report));
    return resultCode;
}

PreviewWindow *ReportControl::preview() const { return m_preview; }

bool ReportControl::eventFilter(QObject *watched, QEvent *event)
{
    // A window that deletes itself when it is closed lives on for as long as the action that closed it. The screen's
    // own hiding, of a window that is made an icon, is spontaneous.
    if (watched == m_owner && event->type() == QEvent::Hide && !event->spontaneous() && m_preview)
        m_preview->close();
    return QObject::eventFilter(watched, event);
}

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
