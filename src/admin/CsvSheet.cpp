#include "admin/CsvSheet.h"

#include "admin/ImportStatus.h"
#include "admin/Refusal.h"
#include "db/Schema.h"
#include "platform/system/ProgramFolder.h"
#include "platform/text/TextCompare.h"
#include "platform/text/Windows1252.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace {

// Far more than a crib of 32,767 tools takes.
constexpr qint64 largestFile = 64 << 20;
constexpr int mostRows = 200'000;
constexpr int rowsBetweenSigns = 1000;

Refusal refusal(int status, const QString &words) { return {status, words + '.'}; }

QByteArray bytesOf(const QString &name)
{
    QFile file(ProgramFolder::toNative(name));
    if (!QFileInfo::exists(file.fileName()))
        throw refusal(ImportStatus::NotReadable, "is not there");
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        throw refusal(ImportStatus::NotReadable, "is not a file that can be read");
    if (file.size() > largestFile)
        throw refusal(ImportStatus::NotReadable, "is larger than 64 MB, which no crib's table is");
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        throw refusal(ImportStatus::NotReadable, "cannot be read: " + file.errorString());
    return bytes;
}

void requireText(const QString &text, bool isWindows1252)
{
    int line = 1;
    for (const QChar c : text) {
        line += c == u'\n';
        const bool isControl = c < u' ' && c != u'\t' && c != u'\n' && c != u'\r';
        if (isControl || (isWindows1252 && c == QChar::ReplacementCharacter))
            throw refusal(ImportStatus::NotReadable,
                          QString("is no text in UTF-8 or Windows-1252: line %1 has other bytes; save the table as CSV")
                              .arg(line));
    }
}

/// Headings are the same when their letters and digits are.
QString lettersOf(QString heading)
{
    return foldCase(heading.removeIf([](QChar c) { return !c.isLetterOrNumber(); }));
}

bool isBlank(const CsvRow::Cell &cell) { return !cell.isQuoted && cell.text.trimmed().isEmpty(); }

Value numberOf(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber)
        throw CellFault(inMarks(text) + " is no whole number of 32 bits");
    return number;
}

Value quantityOf(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 0 || number > Schema::highestToolNumber)
        throw CellFault(inMarks(text) + QString(" is no whole number from 0 to %1").arg(Schema::highestToolNumber));
    return number;
}

Value yesNoOf(const QString &text)
{
    static const QStringList yes{"yes", "true", "-1", "1"}, no{"no", "false", "0"};
    if (yes.contains(text, Qt::CaseInsensitive))
        return -1;
    if (no.contains(text, Qt::CaseInsensitive))
        return 0;
    throw CellFault(inMarks(text) + " is neither yes nor no");
}

}

CsvSheet::CsvSheet(const QString &file, const CsvKind &kind, std::optional<DecimalSign> decimal, CsvFaults &faults,
                   const std::function<void(int percent)> &progress)
    : m_kind(kind), m_faults(faults), m_decimal(decimal)
{
    const QString text = textOf(bytesOf(file));
    CsvReader reader(text, CsvReader::separatorIn(text));
    CsvRow headings;
    if (!reader.read(headings))
        throw refusal(ImportStatus::Content, "is empty; its first line must have the headings");
    readHeadings(headings);
    readRows(reader, progress);
    findDecimalSign();
    for (const CsvRow &row : m_cells)
        m_rows.push_back(converted(row));
    m_cells.clear();
}

QStringList CsvSheet::notes() const
{
    QStringList notes;
    if (m_isWindows1252)
        notes << "It is not UTF-8 and was read as Windows-1252.";
    for (size_t i = 0; i < m_kind.columns.size(); ++i) {
        const CsvColumn &column = m_kind.columns[i];
        const auto isLong = [&](const Row &row) { return row.values[i].toText().size() > column.longestTyped; };
        const auto first = std::ranges::find_if(m_rows, isLong);
        if (column.longestTyped > 0 && first != m_rows.end())
            notes << QString("Texts below %1 with more than %2 characters, which nobody can type in the windows: %3, "
                             "the first in line %4.")
                         .arg(column.heading)
                         .arg(column.longestTyped)
                         .arg(std::ranges::count_if(m_rows, isLong))
                         .arg(first->line);
    }
    return notes;
}

QString CsvSheet::textOf(const QByteArray &bytes)
{
    // Stateless: a character that the end cuts off is a fault as well.
    QStringDecoder decoder(QStringDecoder::encodingForData(bytes).value_or(QStringDecoder::Utf8),
                           QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    m_isWindows1252 = decoder.hasError();
    if (m_isWindows1252)
        text = fromWindows1252(bytes);
    requireText(text, m_isWindows1252);
    return text;
}

void CsvSheet::readHeadings(const CsvRow &row)
{
    QStringList faults, known;
    for (const CsvColumn &column : m_kind.columns)
        known << column.heading;
    if (!row.fault.isEmpty())
        faults << "its first line cannot be told: " + row.fault;
    for (const CsvRow::Cell &cell : row.cells) {
        const auto isMeant = [letters = lettersOf(cell.text)](const CsvColumn &column) {
            return letters == lettersOf(column.heading)
                || std::ranges::any_of(column.otherHeadings,
                                       [&](const QString &other) { return letters == lettersOf(other); });
        };
        const auto found = std::ranges::find_if(m_kind.columns, isMeant);
        const int column = found == m_kind.columns.end() ? -1 : int(found - m_kind.columns.begin());
        if (column < 0 && !cell.text.trimmed().isEmpty())
            faults << "the heading " + inMarks(cell.text) + " is unknown";
        else if (column >= 0 && std::ranges::count(m_columns, column) == 1)
            faults << "the heading " + inMarks(found->heading) + " stands there twice";
        m_columns.push_back(column);
    }
    for (size_t column = 0; column < m_kind.columns.size(); ++column)
        if (m_kind.columns[column].isRequired && std::ranges::count(m_columns, int(column)) == 0)
            faults << "the heading " + inMarks(m_kind.columns[column].heading) + " is missing";
    if (!faults.isEmpty())
        throw refusal(ImportStatus::Content,
                      QString("is no list of %1: %2; the headings are %3")
                          .arg(m_kind.name, faults.first(qMin(faults.size(), 10)).join(", "), known.join(", ")));
}

void CsvSheet::readRows(CsvReader &reader, const std::function<void(int percent)> &progress)
{
    int count = 0;
    for (CsvRow row; reader.read(row);) {
        if (progress && count % rowsBetweenSigns == 0)
            progress(reader.percent());
        if (row.fault.isEmpty() && std::ranges::all_of(row.cells, isBlank))
            continue; // the end of a spreadsheet
        if (row.fault.isEmpty() && row.cells.size() != m_columns.size())
            row.fault = QString("there are %1 cells, but %2 headings").arg(row.cells.size()).arg(m_columns.size());
        if (++count > mostRows)
            throw refusal(ImportStatus::Content, QString("has more than %1 rows").arg(mostRows));
        if (row.fault.isEmpty())
            m_cells.push_back(row);
        else
            m_faults.add(row.line, {}, row.fault);
    }
}

/// The first price that can be read in one way only decides for all.
void CsvSheet::findDecimalSign()
{
    const CsvRow *doubtful = nullptr;
    QString price;
    for (const CsvRow &row : m_cells) {
        for (size_t i = 0; i < m_columns.size() && !m_decimal; ++i) {
            if (m_columns[i] < 0 || m_kind.columns[m_columns[i]].kind != CsvColumn::Price)
                continue;
            const auto point = priceIn(row.cells[i].text, DecimalSign::Point);
            const auto comma = priceIn(row.cells[i].text, DecimalSign::Comma);
            if (point && !comma)
                m_decimal = DecimalSign::Point;
            else if (comma && !point)
                m_decimal = DecimalSign::Comma;
            else if (point != comma && !doubtful) {
                doubtful = &row;
                price = row.cells[i].text;
            }
        }
    }
    if (!m_decimal && doubtful)
        throw refusal(
            ImportStatus::Content,
            QString("has prices that can be read in two ways, as %1 in line %2; say which with --decimal point "
                    "or --decimal comma")
                .arg(inMarks(price))
                .arg(doubtful->line));
}

CsvSheet::Row CsvSheet::converted(const CsvRow &row) const
{
    Row values{row.line, {}};
    for (const CsvColumn &column : m_kind.columns)
        values.values.push_back(column.whenAbsent.isEmpty() ? Value() : converted({column.whenAbsent}, column));
    for (size_t i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i] < 0) {
            if (!isBlank(row.cells[i]))
                m_faults.add(row.line, {}, inMarks(row.cells[i].text) + " stands below no heading");
            continue;
        }
        const CsvColumn &column = m_kind.columns[m_columns[i]];
        try {
            values.values[m_columns[i]] = converted(row.cells[i], column);
        } catch (const CellFault &fault) {
            values.values[m_columns[i]] = {};
            m_faults.add(row.line, column.heading, fault.words());
        }
    }
    return values;
}

Value CsvSheet::converted(const CsvRow::Cell &cell, const CsvColumn &column) const
{
    // A spreadsheet puts quotation marks around what is not to be touched.
    const QString tidy = csvUnguarded(cell.text.simplified());
    const QString text = cell.isQuoted ? csvUnguarded(cell.text) : tidy;
    if (column.isRequired && tidy.isEmpty())
        throw CellFault("may not be blank");
    if (tidy.isEmpty() && (!cell.isQuoted || column.kind != CsvColumn::Text))
        return {};
    switch (column.kind) {
    case CsvColumn::Text:
        if (column.longest > 0 && text.size() > column.longest)
            throw CellFault(inMarks(text)
                            + QString(" has %1 characters, but may have %2").arg(text.size()).arg(column.longest));
        return text;
    case CsvColumn::TypePath:
    case CsvColumn::LocationPath:
        return tidy;
    case CsvColumn::Number:
        return numberOf(tidy);
    case CsvColumn::Quantity:
        return quantityOf(tidy);
    case CsvColumn::YesNo:
        return yesNoOf(tidy);
    case CsvColumn::Price:
        const DecimalSign sign = m_decimal.value_or(DecimalSign::Point);
        if (const auto price = priceIn(tidy, sign))
            return *price;
        throw CellFault(inMarks(tidy)
                        + QString(" is no price from 0 to 9999999.99, written with a decimal %1")
                              .arg(sign == DecimalSign::Point ? "point" : "comma"));
    }
    return {};
}
