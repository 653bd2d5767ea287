#pragma once

#include <QString>

/// The one order of texts: without regard to case for all letters, accents after their base
/// letters. Statements, report formulas and sorted trees all compare by it, so that what is listed
/// is what is printed.
int compareText(QStringView a, QStringView b);
/// The same over UTF-8.
int compareText(std::string_view a, std::string_view b);
