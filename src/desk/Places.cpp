#include "desk/Places.h"

#include "db/Session.h"

Places::Places()
{
    for (Recordset rows = openRecordset("Select ID,Parent,Description from Locations"); !rows.atEnd();
         rows.moveNext()) {
        const qint32 id = qint32(rows.field(0).toInteger()), parent = qint32(rows.field(1).toInteger());
        m_places.insert(id, {rows.field(2).toText(), parent});
        m_children.insert(parent, id);
    }
}

QString Places::path(qint32 location, qint32 from) const
{
    QStringList names;
    // Other programs may have left a circle.
    while (m_places.contains(location) && names.size() < m_places.size()) {
        names.prepend(m_places[location].name);
        if (location == from)
            break;
        location = m_places[location].parent;
    }
    return names.join(" / ");
}

QList<qint32> Places::within(qint32 location) const
{
    QList<qint32> all{location};
    for (qsizetype next = 0; next < all.size() && all.size() <= m_places.size(); ++next)
        all += m_children.values(all[next]);
    return all;
}
