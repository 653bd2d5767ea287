#include "common/MainFrame.h"

#include "db/Session.h"
#include "platform/gui/ElidingLabel.h"
#include "platform/reportcontrol/ReportControl.h"

#include <QStatusBar>

namespace {
MainFrame *frame = nullptr;
}

ReportControl &MainFrame::CrpMain()
{
    if (!m_CrpMain) {
        m_CrpMain = new ReportControl(Session::database(), this);
        m_CrpMain->setObjectName("CrpMain");
    }
    return *m_CrpMain;
}

void MainFrame::showStatus(const QString &text)
{
    if (!m_status) {
        m_status = new ElidingLabel;
        m_status->setAccessibleName("Selected line");
        statusBar()->addWidget(m_status, 1);
    }
    m_status->setText(text);
    m_status->setToolTip(text);
}

MainFrame &theMainFrame()
{
    Q_ASSERT(frame);
    return *frame;
}

void setTheMainFrame(MainFrame *newFrame) { frame = newFrame; }
