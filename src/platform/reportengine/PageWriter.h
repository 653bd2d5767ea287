#pragma once

#include "platform/reportengine/Pagination.h"
#include "platform/system/Progress.h"

class QFileDevice;
class QPagedPaintDevice;

/// Puts the pages of a complete layout on paper or into a file.
class PageWriter
{
public:
    PageWriter(const Pagination &pages, BandComposer &composer) : m_pages(pages), m_composer(composer) { }

    /// Prints pages `first` to `last`, from 0, on a device whose page is set up already.
    /// @throws ReportError 20513 when the device does not start or takes no further page.
    void print(QPagedPaintDevice &device, int first, int last, const Progress &progress) const;
    /// Writes all pages as a PDF document, whose text can be selected.
    /// @throws ReportError 20529 for a full disk, 20530 for any other failure.
    void writePdf(QFileDevice &file, const Template &report, const QString &title, const Progress &progress) const;

private:
    const Pagination &m_pages;
    BandComposer &m_composer;
};
