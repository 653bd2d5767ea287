#include "common/ExplorerWindow.h"

#include <stdexcept>

namespace {
ExplorerWindow *open = nullptr;
}

ExplorerWindow &theExplorer()
{
    if (!open)
        throw std::logic_error("The tool explorer is not open.");
    return *open;
}

ExplorerWindow *explorerIfOpen() { return open; }

void setTheExplorer(ExplorerWindow *explorer) { open = explorer; }
