#include "common/ItemId.h"

#include "platform/text/Numbers.h"

qint16 ItemId::toolNumber() const { return asInteger(number); }

QString ItemId::nodeKey() const
{
    if (kind == root)
        return "x0";
    return (kind == charge ? u'C' : u'l') + digits();
}

QString ItemId::itemKey(const char *folderPrefix) const
{
    switch (kind) {
    case root:
        return nodeKey();
    case folder:
        return folderPrefix + digits();
    case charge:
        return "l" + digits();
    case chargeKind:
        return "s" + digits();
    case toolInStock:
        return "r" + digits();
    case toolOut:
    case description:
        return "co" + digits();
    case scrapRecord:
        return "j" + digits();
    }
    return {};
}

ItemId ItemId::of(const KeyedTree::Node &node, Kind below)
{
    const Kind kind = !node.parent ? root : node.key.startsWith(u'C') ? charge : below;
    return {kind, node.key.mid(1).toLongLong()};
}

ItemId ItemId::of(const ListItem &item, Kind folders)
{
    const auto number = [&](int prefixLength) { return item.key.mid(prefixLength).toLongLong(); };
    if (item.key.startsWith("co"))
        return {item.icon == ItemIcon::folder ? description : toolOut, number(2)};
    switch (item.key.isEmpty() ? 0 : item.key.front().unicode()) {
    case u'r':
        return {toolInStock, number(1)};
    case u'j':
        return {scrapRecord, number(1)};
    case u's':
        return {chargeKind, number(1)};
    case u't':
    case u'l':
        return {folders, number(1)};
    default:
        return {};
    }
}
