#include "platform/report/CsvWriter.h"

#include "platform/report/OutputFile.h"

namespace {

constexpr int rowsBetweenReports = 1024;
constexpr const char *byteOrderMark = "\xEF\xBB\xBF";

QByteArray quoted(QString text)
{
    const auto needsQuotes = [](QChar c) { return c == ',' || c == '"' || c == '\n' || c == '\r'; };
    if (std::any_of(text.begin(), text.end(), needsQuotes))
        text = '"' + text.replace('"', QStringLiteral("\"\"")) + '"';
    return text.toUtf8();
}

QByteArray exported(const Value &value)
{
    QString text = value.toText();
    if (value.isText() && !text.isEmpty() && QStringLiteral("=+-@").contains(text.front()))
        text.prepend('\'');
    return quoted(text);
}

}

void writeCsv(QFileDevice &file, const Records &records, const FieldList &fields, const Progress &progress)
{
    QByteArrayList headings;
    for (const Field &field : fields)
        headings.append(quoted(field.name()));
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
