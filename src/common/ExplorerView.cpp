#include "common/ExplorerView.h"

#include <stdexcept>

namespace {
ExplorerView *open = nullptr;
}

ExplorerView &theExplorer()
{
    if (!open)
        throw std::logic_error("The tool explorer is not open.");
    return *open;
}

ExplorerView *explorerIfOpen() { return open; }

void setTheExplorer(ExplorerView *explorer) { open = explorer; }
