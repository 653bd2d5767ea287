#pragma once

#include "platform/gui/HelpKey.h"

/// Which page of docs/manual F1 shows in which window.
std::vector<HelpPage> helpPages();
