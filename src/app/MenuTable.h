#pragma once

#include <functional>
#include <vector>

/// One entry of a menu; without a caption it is a separator, without a command choosing it does nothing.
struct MenuEntry {
    const char *name;
    const char *caption = nullptr;
    std::function<void()> command = {};
};

/// One top-level menu. A hidden one is never on the bar: it serves as a pop-up.
struct MenuRow {
    const char *name;
    const char *caption;
    bool hidden;
    std::vector<MenuEntry> entries;
};

/// The menus of the main window, in order.
std::vector<MenuRow> menuTable();
