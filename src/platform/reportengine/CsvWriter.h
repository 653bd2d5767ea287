#pragma once

#include "platform/reportengine/GroupedRecords.h"
#include "platform/system/Progress.h"

class QFileDevice;

/// Writes a report's records as comma-separated values: UTF-8 with a byte order mark, a line of headings, dates as they
/// are stored, numbers plain. A text that a spreadsheet would run as a formula gets an apostrophe in front.
/// @throws ReportError 20529 for a full disk, 20530 for any other failure.
void writeCsv(QFileDevice &file, const GroupedRecords &records, const FieldList &fields, const Progress &progress);
