#include "admin/RowWriter.h"

namespace {

int columnCount(const Database &database, const QString &table)
{
    const dialect::Table *found = database.table(table);
    return found ? int(found->columns.size()) : 0;
}

}

RowWriter::RowWriter(Database &database, const QString &table)
    : m_database(database), m_table(table), m_rows(columnCount(database, table))
{
}

void RowWriter::flush()
{
    m_database.append(m_table, m_rows);
    m_rows.clear();
}
