#pragma once

#include <QString>

class ReportControl;

/// What a print run shows in a preview over the main window.
struct ReportRun {
    QString windowTitle;
    QString templateFile; ///< its name; templates lie in the program's folder
    QString selectionFormula;
};

/// Drives `control` through a print run. A failure has been shown when it returns false.
bool printReport(ReportControl &control, const ReportRun &run);
