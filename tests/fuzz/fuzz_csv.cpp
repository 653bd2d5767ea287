#include "admin/CsvPlan.h"
#include "admin/Refusal.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

std::vector<CsvRow> rowsOf(const QString &text, QChar separator)
{
    std::vector<CsvRow> rows;
    CsvReader reader(text, separator);
    for (CsvRow row; reader.read(row);)
        rows.push_back(row);
    return rows;
}

/// Rows that are written come back as they are.
void requireRoundTrip(const std::vector<CsvRow> &rows)
{
    QString written;
    std::vector<QStringList> texts;
    for (const CsvRow &row : rows) {
        if (!row.fault.isEmpty())
            continue;
        QStringList cells;
        texts.emplace_back();
        for (const CsvRow::Cell &cell : row.cells) {
            cells << csvField(csvGuarded(cell.text));
            texts.back() << cell.text;
        }
        written += cells.join(',') + "\r\n";
    }
    const std::vector<CsvRow> again = rowsOf(written, ',');
    if (again.size() != texts.size())
        std::abort();
    for (size_t row = 0; row < again.size(); ++row) {
        QStringList cells;
        for (const CsvRow::Cell &cell : again[row].cells)
            cells << csvUnguarded(cell.text);
        if (cells != texts[row])
            std::abort();
    }
}

}

/// A table is taken as each kind of rows, or refused; nothing else may happen.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir folder("/dev/shm/csv-XXXXXX");
    static const QString name = folder.filePath("table.csv");
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(reinterpret_cast<const char *>(data), qint64(size)) < 0)
        std::abort();
    file.close();
    for (const CsvKind &kind : CsvKind::all()) {
        try {
            CsvFaults faults;
            const CsvSheet sheet(name, kind, {}, faults);
            CsvPlan plan(kind);
            plan.take(sheet, faults);
            (sheet.notes() + plan.notes() + plan.report() + faults.list()).join('\n');
        } catch (const Refusal &) {
        }
    }
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    requireRoundTrip(rowsOf(text, CsvReader::separatorIn(text)));
    return 0;
}
