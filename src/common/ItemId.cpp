#include "common/ItemId.h"

#include "platform/text/Numbers.h"

#include <algorithm>
#include <charconv>

namespace {

// Trees and lists have a key for each of thousands of rows: it is made in one piece.
QString keyOf(std::string_view prefix, qint64 number)
{
    char text[32];
    char *const digits = std::ranges::copy(prefix, text).out;
    return QLatin1StringView(text, std::to_chars(digits, std::end(text), number).ptr);
}

}

qint16 ItemId::toolNumber() const { return asInteger(number); }

QString ItemId::nodeKey() const
{
    if (kind == root)
        return "x0";
    return keyOf(kind == charge ? "C" : "l", number);
}

QString ItemId::itemKey(const char *folderPrefix) const
{
    switch (kind) {
    case root:
        return nodeKey();
    case folder:
        return keyOf(folderPrefix, number);
    case charge:
        return keyOf("l", number);
    case chargeKind:
        return keyOf("s", number);
    case toolInStock:
        return keyOf("r", number);
    case toolOut:
    case description:
        return keyOf("co", number);
    case scrapRecord:
        return keyOf("j", number);
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
