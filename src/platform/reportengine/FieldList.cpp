#include "platform/reportengine/FieldList.h"

#include <algorithm>

Field Field::fromName(QStringView name)
{
    const auto belongsInName = [](QChar c) { return c.isLetterOrNumber() || c == '_' || c == ' '; };
    const auto isName = [&](QStringView part) {
        return !part.isEmpty() && std::all_of(part.begin(), part.end(), belongsInName);
    };
    const qsizetype dot = name.indexOf('.');
    const QStringView table = name.first(std::max<qsizetype>(dot, 0)).trimmed();
    const QStringView column = name.sliced(dot + 1).trimmed();
    Field field;
    if (isName(table) && isName(column)) {
        field.table = table.toString();
        field.column = column.toString();
    }
    return field;
}

int FieldList::add(QStringView name, int line, bool isData)
{
    Field field = Field::fromName(name);
    if (field.table.isEmpty())
        return -1;
    const int known = find(field.table, field.column);
    if (known >= 0) {
        m_fields[known].isData |= isData;
        return known;
    }
    field.line = line;
    field.isData = isData;
    m_numbers.insert(field.name().toCaseFolded(), count());
    m_fields.append(field);
    return count() - 1;
}

int FieldList::find(const QString &table, const QString &column) const
{
    return m_numbers.value(QString(table + '.' + column).toCaseFolded(), -1);
}
