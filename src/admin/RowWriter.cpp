#include "admin/RowWriter.h"

#include "platform/engine/EngineError.h"

#include <algorithm>

namespace {

constexpr int rowsAtOnce = 500;

const dialect::Table &tableOf(const Database &database, const QString &name)
{
    if (const dialect::Table *table = database.table(name))
        return *table;
    throw EngineError(EngineError::unknownTable, QString("The table '%1' is missing.").arg(name));
}

int indexOf(const QStringList &names, const QString &name)
{
    const auto found =
        std::ranges::find_if(names, [&](const QString &other) { return dialect::sameName(other, name); });
    return found == names.end() ? -1 : int(found - names.begin());
}

}

RowWriter::RowWriter(Database &database, const QString &table, const QStringList &columns)
    : m_database(database), m_table(table), m_rows(int(tableOf(database, table).columns.size()))
{
    for (const dialect::Column &column : tableOf(database, table).columns)
        m_valueOf.push_back(columns.isEmpty() ? int(m_valueOf.size()) : indexOf(columns, column.name));
}

void RowWriter::add(const std::vector<Value> &values)
{
    m_rows.beginRow();
    for (const int value : m_valueOf)
        m_rows.add(value < 0 ? Value() : values[value]);
    if (m_rows.rowCount() == rowsAtOnce)
        flush();
}

void RowWriter::flush()
{
    m_database.append(m_table, m_rows);
    m_rows.clear();
}
