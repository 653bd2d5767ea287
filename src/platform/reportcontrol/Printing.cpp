#include "platform/reportcontrol/Printing.h"

#include "platform/reportengine/Report.h"
#include "platform/reportengine/UsualPaper.h"

#include <QPrinter>
#include <QPrinterInfo>

void setUpPages(QPrinter &printer, const Report &report)
{
    printer.setFullPage(true);
    // One by one: a printer that knows no other sizes than its own refuses whole layouts.
    printer.setPageSize(report.pageLayout().pageSize());
    printer.setPageOrientation(report.pageLayout().orientation());
    printer.setDocName(report.title());
}

QPageSize paperOfPrinter()
{
    // Once: a printer that is far away takes its time to answer.
    static const QPageSize::PageSizeId printers = QPrinterInfo::defaultPrinter().defaultPageSize().id();
    const bool isUsual = printers == QPageSize::Letter || printers == QPageSize::A4;
    return isUsual ? QPageSize(printers) : UsualPaper::ofLocale();
}

int printPages(QPrinter &printer, Report &report, int currentPage)
{
    if (const int resultCode = report.layout())
        return resultCode;
    int first = 0, last = report.pageCount() - 1;
    if (printer.printRange() == QPrinter::PageRange) {
        first = printer.fromPage() - 1;
        last = printer.toPage() - 1;
    } else if (printer.printRange() == QPrinter::CurrentPage) {
        first = last = currentPage;
    }
    const int runs = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    for (int run = 0; run < runs; ++run)
        if (const int resultCode = report.print(printer, first, last))
            return resultCode;
    return ResultCode::ok;
}

int printOn(const QPrinterInfo &printerInfo, Report &report)
{
    if (printerInfo.isNull())
        return ResultCode::noDefaultPrinter;
    QPrinter printer(printerInfo, QPrinter::HighResolution);
    setUpPages(printer, report);
    return printPages(printer, report);
}
