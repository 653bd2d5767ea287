#pragma once

#include "platform/reportcontrol/PageView.h"
#include "ui_PreviewWindow.h"

#include <QTimer>

#include <functional>
#include <memory>

class RunProgress;

/// Shows the pages of a report while the later ones are still being laid out: to be leafed through, searched, printed,
/// and written to a file.
class PreviewWindow : public QMainWindow
{
    Q_OBJECT
public:
    using ErrorRoutine = std::function<void(int resultCode, const QString &detail)>;

    /// `report` is open and has its first page. What fails later is handed to `errorRoutine`.
    PreviewWindow(std::unique_ptr<Report> report, ErrorRoutine errorRoutine, QWidget *owner);
    ~PreviewWindow() override;

    Ui::PreviewWindow ui;

private:
    void connectCommands();
    void layOutFurtherPages();
    /// Carries out a step of the report with a bar after half a second; false when it failed or was cancelled.
    bool perform(const QString &title, const std::function<int(RunProgress &)> &step);
    bool layOutAllPages(const QString &title);
    void showPageCount();
    void showCurrentPage();
    void showZoom();
    void fpPage_Change();
    void cboZoom_Change();
    template<typename Box>
    void edit(Box *box);
    void find(int direction);
    bool findPlaces();
    int firstPlace(int direction) const;
    void mnuGoLast_Click();
    void mnuFilePrint_Click();
    void mnuFilePdf_Click();
    void mnuFileCsv_Click();

    std::unique_ptr<Report> m_report;
    ErrorRoutine m_errorRoutine;
    QTimer m_layoutTimer;
    QString m_soughtText;
    int m_placeCount = 0; ///< how often the sought text stands on the pages
    int m_place = -1; ///< number of the one that is shown, -1 for none yet
};
