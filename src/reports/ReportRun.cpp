#include "reports/ReportRun.h"

#include "common/MainFrame.h"
#include "platform/gui/HourGlass.h"
#include "platform/reportcontrol/ReportControl.h"
#include "platform/system/ProgramFolder.h"
#include "reports/ReportErrorTexts.h"

#include <cmath>

namespace {

void showError(int code, const QString &detail)
{
    qint16 resultCode = qint16(code);
    ModMain::ShowReportError(resultCode, detail);
}

}

bool printReport(ReportControl &control, const ReportRun &run)
{
    const HourGlass busy;
    const MainFrame &frame = theMainFrame();
    control.windowTitle = run.windowTitle;
    control.reportFile = ProgramFolder::path() + '\\' + run.templateFile;
    control.selectionFormula = run.selectionFormula;
    control.windowWidth = int(std::nearbyint(frame.width() * 0.8));
    control.windowHeight = int(std::nearbyint(frame.height() * 0.8));
    // In the middle from top to bottom and, as everywhere in the suite, somewhat left of the middle.
    control.windowLeft = int(std::nearbyint((frame.width() - control.windowWidth) / 2 * 0.65));
    control.windowTop = (frame.height() - control.windowHeight) / 2;
    control.destination = ReportControl::toPreview;
    control.errorRoutine = showError;
    const int resultCode = control.print();
    if (resultCode != 0)
        showError(resultCode, control.lastDetail());
    return resultCode == 0;
}
