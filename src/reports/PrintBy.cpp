#include "reports/PrintBy.h"

#include "common/MainFrame.h"
#include "db/Session.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/UserAction.h"
#include "platform/gui/WindowOwner.h"
#include "reports/ReportRun.h"

constinit const PrintByKind PrintByKind::frmPrByJob{
    .name = "frmPrByJob",
    .caption = "Print by Selected Job",
    .frame = "Select Job to Print on:",
    .statement = "Select distinct Scrap.Job from Scrap order by job desc",
    .field = "Job",
    .windowTitle = "Junk Tools - Ordered By Job",
    .templateFile = "ToolsJunkByJob.rpt",
    .formula = "{Scrap.job} = ",
    .boxName = "Job",
};

constinit const PrintByKind PrintByKind::frmPrByEmp{
    .name = "frmPrByEmp",
    .caption = "Print by Selected Employee",
    .frame = "Select Employee to Print on:",
    .statement = "Select distinct Scrap.employee from Scrap order by employee",
    .field = "employee",
    .windowTitle = "Junk Tools - Ordered By Employee",
    .templateFile = "ToolsJunkByEmployee.rpt",
    .formula = "{Scrap.employee} = ",
    .boxName = "Employee",
};

void PrintBy::showModal(const PrintByKind &kind) { PrintBy(kind).exec(); }

PrintBy::PrintBy(const PrintByKind &kind) : QDialog(windowOwner()), m_kind(kind)
{
    const HourGlass busy;
    ui.setupUi(this);
    setObjectName(kind.name);
    setWindowTitle(kind.caption);
    ui.Frame1->setTitle(kind.frame);
    ui.dbcJob->setAccessibleName(kind.boxName);
    ui.dbcJob->setSource(openRecordset(kind.statement), kind.field, kind.field);
    onUserAction(ui.cmdOK, &QPushButton::clicked, this, &PrintBy::cmdOK_Click);
    onUserAction(ui.cndCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void PrintBy::cmdOK_Click()
{
    if (printReport(theMainFrame().CrpMain(),
                    {m_kind.windowTitle, m_kind.templateFile, m_kind.formula + ui.dbcJob->text()}))
        accept();
}
