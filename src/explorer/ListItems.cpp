#include "explorer/ListItems.h"

#include "common/ItemId.h"
#include "db/Session.h"
#include "explorer/Panes.h"
#include "platform/gui/Icons.h"

#include <QStringBuilder>

ItemPicture ListItems::picture(int number)
{
    switch (number) {
    case ItemIcon::toolOut:
        return {Icons::icon("tool-out"), "out"};
    case ItemIcon::toolInStock:
        return {Icons::icon("tool-in"), "in the crib"};
    case ItemIcon::toolScrapped:
        return {Icons::icon("tool-scrapped"), "scrapped"};
    case ItemIcon::openFolder:
        return {Icons::icon("folder-open"), "folder"};
    default:
        return {Icons::folder(), "folder"};
    }
}

QString ListItems::elsewhere(const QString &folder) { return u"..\\" % folder; }

QString ListItems::personName(const Recordset &row) { return row.text(u"LastName") % u", " % row.text(u"FirstName"); }

ListItem ListItems::folder(const QString &key, const QString &text)
{
    return {.key = key, .text = text, .icon = ItemIcon::folder};
}

void ListItems::addOutWithoutLoan(Panes &panes, const QString &condition, ListItem (*itemOf)(const Recordset &row))
{
    QSet<QString> listed;
    for (int row = 0; row < panes.items().count(); ++row)
        if (const ListItem &item = panes.items().item(row); item.icon == ItemIcon::toolOut)
            listed.insert(item.key);
    if (openRecordset("SELECT Count(*) as cnt FROM Tools WHERE Tools.out=true" + condition).field(u"cnt").toInteger()
        <= listed.size())
        return;
    Recordset rows = openRecordset("SELECT Tools.*, Locations.description as locdesc, Types.description as typedesc,"
                                   " '' as Employee, '' as LastName, '' as FirstName, '' as DateOut"
                                   " FROM Tools, Locations, Types"
                                   " WHERE Tools.Type=Types.ID and Tools.Location=Locations.ID"
                                   " AND Tools.out=true"
                                   + condition);
    for (; !rows.atEnd(); rows.moveNext())
        if (!listed.contains("co" + rows.text(u"ID")))
            panes.items().add(itemOf(rows));
}
