#pragma once

#include "platform/gui/KeyedList.h"

namespace MainSubs {

/// The tool list's columns in a view mode ("type", "location", "checkedOut", "scrap"), in order.
std::vector<ListColumn> listColumns(const QString &mode);

/// The find dialog's columns for a view mode; its rows also tell where they were found.
std::vector<ListColumn> findColumns(const QString &mode);

/// The picture of an item of the tool list.
QIcon itemIcon(int number);

}
