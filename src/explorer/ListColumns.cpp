#include "explorer/ListColumns.h"

#include "common/ItemKeys.h"
#include "platform/gui/Icons.h"

std::vector<ListColumn> MainSubs::listColumns(const QString &mode)
{
    if (mode == "checkedOut")
        return {{"Description", 2000}, {"Part Number", 1440}, {"Employee", 1440},
                {"Date Out", 1440},    {"Type", 1440},        {"Location", 1440}};
    if (mode == "scrap")
        return {
            {"Description", 2000}, {"Part Number", 1440}, {"Type", 1440}, {"Employee", 1440}, {"Date Scrapped", 1440}};
    return {{"Description", 2000}, {"Part Number", 1440},  {"Type", 1440},
            {"Location", 1440},    {"Manufacturer", 1440}, {"Checkout Employee", 2000}};
}

std::vector<ListColumn> MainSubs::findColumns(const QString &mode)
{
    if (mode == "checkedOut")
        return {{"Description", 3000}, {"Part Number", 1600}, {"Employee", 2200},
                {"Date Out", 1900},    {"Type", 2200},        {"Location", 2200}};
    if (mode == "scrap")
        return {{"Description", 3000}, {"Part Number", 1600},   {"Type", 2200},
                {"Employee", 2200},    {"Date Scrapped", 1700}, {"Job or OH", 1700}};
    return {{"Description", 3000}, {"Part Number", 1600}, {"Manufacturer", 1800}, {"Path", 5000}};
}

QIcon MainSubs::itemIcon(int number)
{
    switch (number) {
    case ItemIcon::toolOut:
        return Icons::icon("tool-out");
    case ItemIcon::toolInStock:
        return Icons::icon("tool-in");
    case ItemIcon::toolScrapped:
        return Icons::icon("tool-scrapped");
    case ItemIcon::openFolder:
        return Icons::icon("folder-open");
    default:
        return Icons::folder();
    }
}
