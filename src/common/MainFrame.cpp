#include "common/MainFrame.h"

#include "db/Session.h"
#include "platform/reportcontrol/ReportControl.h"

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

MainFrame &theMainFrame()
{
    Q_ASSERT(frame);
    return *frame;
}

void setTheMainFrame(MainFrame *newFrame) { frame = newFrame; }
