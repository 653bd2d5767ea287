#include "common/MainFrame.h"

namespace {
MainFrame *frame = nullptr;
}

MainFrame &theMainFrame()
{
    Q_ASSERT(frame);
    return *frame;
}

void setTheMainFrame(MainFrame *newFrame) { frame = newFrame; }
