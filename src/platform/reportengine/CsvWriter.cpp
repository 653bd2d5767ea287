#include "platform/reportengine/CsvWriter.h"

#include "platform/reportengine/OutputFile.h"
#include "platform/text/Csv.h"

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
    QByteArrayList headings;
    for (const Field &field : fields)
        headings.append(csvField(field.name()).toUtf8());
    file.write(byteOrderMark + headings.join(',') + "\r\n");
    for (int row = 0; row < records.count(); ++row) {
        if (row % rowsBetweenReports == 0) {
            OutputFile::check(file);
            progress(double(row) / records.count());
        }
        QByteArrayList cells;
        for (int number = 0; number < fields.count(); ++number)
            cells.append(exported(records.record(row)[number]));
        file.write(cells.join(',') + "\r\n");
    }
    file.flush();
    OutputFile::check(file);
}
