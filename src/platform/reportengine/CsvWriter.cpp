#include "platform/reportengine/CsvWriter.h"

#include "platform/reportengine/OutputFile.h"
#include "platform/text/Csv.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int rowsBetweenReports = 1024;

QByteArray exported(const Value &value)
{
    const QString text = value.toText();
    return csvField(value.isText() ? csvGuarded(text) : text).toUtf8();
}

}

void writeCsv(QFileDevice &file, const GroupedRecords &records, const FieldList &fields, const Progress &progress)
{
    // Who opens the file looks for texts, dates and prices; numbers that only hold tables together go last.
    std::vector<int> columns(fields.count());
    std::iota(columns.begin(), columns.end(), 0);
    std::stable_partition(columns.begin(), columns.end(), [&](int number) {
        return fields.at(number).isData || fields.at(number).kind != FieldKind::Number;
    });
    QByteArrayList headings;
    for (const int number : columns)
        headings.append(csvField(fields.at(number).name()).toUtf8());
    file.write(byteOrderMark + headings.join(',') + "\r\n");
    for (int row = 0; row < records.count(); ++row) {
        if (row % rowsBetweenReports == 0) {
            OutputFile::check(file);
            progress(double(row) / records.count());
        }
        QByteArrayList cells;
        for (const int number : columns)
            cells.append(exported(records.record(row)[number]));
        file.write(cells.join(',') + "\r\n");
    }
    file.flush();
    OutputFile::check(file);
}
