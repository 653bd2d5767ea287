#pragma once

#include <QPageSize>

class QPrinter;
class QPrinterInfo;
class Report;

/// Paper and orientation as the report's pages have them, without margins: those are part of the pages.
void setUpPages(QPrinter &printer, const Report &report);

/// Letter or A4: what the default printer has, else, as with a printer for labels, what is usual where the user is.
QPageSize paperOfPrinter();

/// Prints the pages and copies that `printer` is set to; `currentPage` is the one that the user looks at, from 0.
/// @returns a ResultCode.
int printPages(QPrinter &printer, Report &report, int currentPage = 0);

/// Prints all pages on the printer called so. @returns a ResultCode, 20526 for a printer that there is not.
int printOn(const QPrinterInfo &printer, Report &report);
