#include "desk/Places.h"

#include "catalogue/FolderMove.h"
#include "db/Session.h"
#include "transactions/AtomicChange.h"

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

void Places::move(qint16 tool, qint32 from, qint32 to) const
{
    const Recordset row = openRecordset("Select Location from Tools where id=" + QString::number(tool));
    refuseUnless(!row.isEmpty() && row.field(0).toInteger() == from, "The tool was moved or deleted meanwhile.");
    const FolderMove change{.table = "locations",
                            .column = "location",
                            .folders = {},
                            .tools = {tool},
                            .target = to,
                            .targetText = contains(to) ? name(to) : QString("its place"),
                            .fromTree = false};
    change.move();
}
