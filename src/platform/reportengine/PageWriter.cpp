#include "platform/reportengine/PageWriter.h"

#include "platform/reportengine/OutputFile.h"
#include "platform/reportengine/PagePainter.h"

#include <QPainter>
#include <QPdfWriter>

void PageWriter::print(QPagedPaintDevice &device, int first, int last, const Progress &progress) const
{
    QPainter painter;
    if (!painter.begin(&device))
        throw ReportError(ResultCode::invalidPrinter, QStringLiteral("the printer does not start"));
    painter.scale(device.logicalDpiX() / TextMeasure::twipsPerInch, device.logicalDpiY() / TextMeasure::twipsPerInch);
    for (int page = first; page <= last; ++page) {
        if (page > first && !device.newPage())
            throw ReportError(ResultCode::invalidPrinter, QStringLiteral("the printer takes no further page"));
        paintElements(painter, m_pages.elements(page), m_composer.measure());
        progress(double(page + 1 - first) / (last + 1 - first));
    }
    painter.end();
}

void PageWriter::writePdf(QFileDevice &file, const Template &report, const QString &title,
                          const Progress &progress) const
{
    QPdfWriter writer(&file);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("Vorlane Manager"));
    writer.setResolution(int(TextMeasure::twipsPerInch));
    writer.setPageLayout(report.pageLayout());
    // The writer itself reports success on a full disk, or that there is no further page; the file knows the reason.
    try {
        print(writer, 0, m_pages.pageCount() - 1, [&](double done) {
            OutputFile::check(file);
            progress(done);
        });
    } catch (const ReportError &) {
        OutputFile::check(file);
        throw;
    }
    file.flush();
    OutputFile::check(file);
}
