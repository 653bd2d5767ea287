#include "admin/RowWriter.h"

#include "db/Literals.h"

void RowWriter::flush()
{
    if (!m_rows.isEmpty())
        m_database.executeNative(m_head + m_rows.join(','));
    m_rows.clear();
}

QString RowWriter::literal(const QString &text) { return quoted(text); }

QString RowWriter::literal(Cents price)
{
    return QString("%1.%2").arg(price.amount / 100).arg(price.amount % 100, 2, 10, QChar('0'));
}
