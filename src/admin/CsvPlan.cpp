#include "admin/CsvPlan.h"

#include "admin/RowWriter.h"
#include "admin/Shortened.h"
#include "db/Schema.h"
#include "platform/text/TextCompare.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int longestList = 50;
const QRegularExpression quote("['\"]");

QString uniqueForm(const QString &text) { return foldCase(text.simplified()); }

QSet<QString> valuesIn(Database &database, const QString &table, const QString &column)
{
    QSet<QString> values;
    const Recordset rows = database.openRecordset("SELECT " + column + " FROM " + table);
    for (int row = 0; row < rows.recordCount(); ++row)
        values.insert(uniqueForm(rows.at(row, 0).toText()));
    return values;
}

}

CsvPlan::CsvPlan(const CsvKind &kind, Database *database)
    : m_kind(kind),
      m_types("Types", kind.has(CsvColumn::TypePath) ? database : nullptr),
      m_locations("Locations", kind.has(CsvColumn::LocationPath) ? database : nullptr)
{
    if (!database)
        return;
    if (kind.isCounted())
        m_next = database->nextNumber(kind.table);
    for (const CsvColumn &column : kind.columns)
        if (column.isUnique)
            m_unique = valuesIn(*database, kind.table, column.column);
    if (kind.table == "Job") {
        m_ownJobs = valuesIn(*database, "JobVorlane", "Jobno");
        m_nextOwnJob = database->nextNumber("JobVorlane");
    }
}

void CsvPlan::take(const CsvSheet &sheet, CsvFaults &faults)
{
    for (const CsvSheet::Row &row : sheet.rows()) {
        Rows rows{row.values};
        bool hasQuote = false;
        for (size_t i = 0; i < m_kind.columns.size(); ++i) {
            const CsvColumn &column = m_kind.columns[i];
            const Value &value = row.values[i];
            if (value.isNull())
                continue;
            hasQuote = hasQuote || value.toText().contains(quote);
            try {
                rows.values[i] = stored(column, value);
            } catch (const CellFault &fault) {
                faults.add(row.line, column.heading, fault.words());
            }
            if (column.kind == CsvColumn::Quantity)
                rows.count = int(value.toInteger());
        }
        if (hasQuote && m_kind.isCounted())
            m_quotes.at(row.line);
        if (rows.count == 0)
            m_none.at(row.line);
        m_rows.push_back(rows);
    }
    const qint64 left = Schema::highestToolNumber - m_next + 1;
    if (m_kind.table == "Tools" && rowCount() > left)
        faults.add(0, {},
                   QString("the numbers of tools end at %1; %2 can be added, not %3")
                       .arg(Schema::highestToolNumber)
                       .arg(qMax(0, left))
                       .arg(rowCount()));
}

Value CsvPlan::stored(const CsvColumn &column, const Value &value)
{
    if (column.kind == CsvColumn::TypePath)
        return folder(m_types, value.toText());
    if (column.kind == CsvColumn::LocationPath)
        return folder(m_locations, value.toText());
    if (column.isUnique) {
        const qsizetype before = m_unique.size();
        m_unique.insert(uniqueForm(value.toText()));
        if (m_unique.size() == before)
            throw CellFault(inMarks(value.toText()) + " is there already");
    }
    return value;
}

Value CsvPlan::folder(FolderTree &tree, const QString &path) const
{
    if (!m_kind.isFolders())
        return tree.at(path);
    tree.add(path);
    return {};
}

void CsvPlan::store(Database &database) const
{
    for (const FolderTree *tree : {&m_types, &m_locations})
        tree->store(database);
    if (m_kind.isFolders())
        return;
    // Names that the table does not have are not asked for.
    QStringList names{"ID", "Out"};
    for (const CsvColumn &column : m_kind.columns)
        names << column.column;
    RowWriter stored(database, m_kind.table, names);
    qint64 number = m_next;
    for (const Rows &rows : m_rows) {
        std::vector<Value> values{number, 0};
        values.insert(values.end(), rows.values.begin(), rows.values.end());
        for (int i = 0; i < rows.count; ++i) {
            values.front() = number++;
            stored.add(values);
        }
    }
    stored.flush();
    if (m_kind.table == "Job")
        storeOwnJobs(database);
}

/// Without the suite, jobs are offered from the program's own list.
void CsvPlan::storeOwnJobs(Database &database) const
{
    RowWriter stored(database, "JobVorlane", {"ID", "Jobno"});
    qint64 number = m_nextOwnJob;
    for (const Rows &rows : m_rows) {
        const bool isShipped = rows.values.back().toBool();
        if (!isShipped && !m_ownJobs.contains(rows.values.front().toText()))
            stored.add({number++, rows.values.front()});
    }
    stored.flush();
}

qint64 CsvPlan::rowCount() const
{
    qint64 count = 0;
    for (const Rows &rows : m_rows)
        count += rows.count;
    return count;
}

QStringList CsvPlan::report() const
{
    QStringList lines;
    if (!m_kind.isFolders())
        lines << QString("New %1: %2").arg(m_kind.name).arg(rowCount());
    for (const auto &[tree, name] : {std::pair(&m_types, "types"), std::pair(&m_locations, "locations")}) {
        const QStringList made = tree->made();
        if (made.isEmpty() && m_kind.name != name)
            continue;
        lines << QString("New %1: %2").arg(name).arg(made.size());
        for (const QString &path : shortened(made, longestList, "... and %1 more"))
            lines << "  " + path;
    }
    return lines;
}

QString CsvPlan::Met::note(const QString &what) const
{
    return QString("%1: %2, the first in line %3.").arg(what).arg(count).arg(firstLine);
}

QStringList CsvPlan::notes() const
{
    QStringList notes;
    if (m_quotes.count > 0)
        notes << m_quotes.note("Rows with a quote (' or \") in a text, by which lists and queries may fail");
    if (m_none.count > 0)
        notes << m_none.note("Rows with the quantity 0, which make no tool");
    return notes;
}
