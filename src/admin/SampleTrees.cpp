#include "admin/SampleTrees.h"

#include "admin/SampleWords.h"

#include <numeric>

using namespace SampleWords;

namespace {

/// Grows level by level. On a level each parent gets its first child before any gets its second.
template<typename ChildCount, typename Name>
std::vector<Node> grow(int size, ChildCount childCount, Name name, Dice &dice)
{
    // Numbers do not follow the tree's order, as if its branches had been entered over the years.
    QList<int> numbers(size);
    std::iota(numbers.begin(), numbers.end(), 1);
    for (int i = size - 1; i > 0; --i)
        numbers.swapItemsAt(i, dice.below(i + 1));

    std::vector<Node> nodes(1);
    for (int begin = 0, end = 1; begin < end; begin = end, end = int(nodes.size())) {
        for (int child = 0, grown = 1; grown > 0; ++child) {
            grown = 0;
            for (int parent = begin; parent < end && int(nodes.size()) <= size; ++parent) {
                if (child >= childCount(nodes[parent].path))
                    continue;
                const QList<int> path = nodes[parent].path + QList{child};
                nodes.push_back({path, name(path), numbers[int(nodes.size()) - 1], nodes[parent].number});
                ++grown;
            }
        }
    }
    return nodes;
}

// A type's path: group, family, form, grade, range of sizes.
const Group &groupOf(const QList<int> &path) { return groups[path[0]]; }

const Family &familyOf(const QList<int> &path) { return groupOf(path).families[path[1]]; }

int typeChildCount(const QList<int> &path)
{
    switch (path.size()) {
    case 0:
        return int(std::size(groups));
    case 1:
        return int(std::size(groupOf(path).families));
    case 2:
        return int(words(familyOf(path).forms).size());
    case 3:
        return int(words(groupOf(path).grades).size());
    case 4:
        return int(words(groupOf(path).sizes.marks).size()) - 1;
    default:
        return 0;
    }
}

QString plural(const QString &noun) { return noun + (noun.endsWith("ch") || noun.endsWith('s') ? "es" : "s"); }

QString sizeRange(const Sizes &sizes, int range)
{
    const QStringList marks = words(sizes.marks);
    return QString(sizes.pattern).arg(marks[range]) + " to " + QString(sizes.pattern).arg(marks[range + 1]);
}

QString typeName(const QList<int> &path)
{
    const Group &group = groupOf(path);
    if (path.size() == 1)
        return group.name;
    const Family &family = familyOf(path);
    if (path.size() == 2)
        return plural(family.name);
    QString name = plural(words(family.forms)[path[2]] + ' ' + family.name);
    if (path.size() >= 4)
        name += ", " + words(group.grades)[path[3]];
    if (path.size() >= 5)
        name += ", " + sizeRange(group.sizes, path[4]);
    return name;
}

// A location's path: building, room, cabinet, drawer, bin.
int locationChildCount(const QList<int> &path)
{
    const int counts[] = {
        int(words(buildings).size()), int(words(rooms).size()), cabinetsInRoom, drawersInCabinet, binsInDrawer, 0};
    return counts[path.size()];
}

QString locationName(const QList<int> &path)
{
    const QString building = words(buildings)[path[0]];
    if (path.size() == 1)
        return building;
    const QString room = words(rooms)[path[1]];
    if (path.size() == 2)
        return building + ' ' + room;
    // "MT-3" is the third cabinet of the Main Hall's Tool Room.
    QString code = QString("%1%2-%3").arg(building[0], room[0]).arg(path[2] + 1);
    if (path.size() == 3)
        return "Cabinet " + code;
    code += QString("-%1").arg(path[3] + 1);
    return path.size() == 4 ? "Drawer " + code : QString("Bin %1-%2").arg(code).arg(path[4] + 1);
}

}

std::vector<Node> growTypes(int size, Dice &dice) { return grow(size, typeChildCount, typeName, dice); }

std::vector<Node> growLocations(int size, Dice &dice) { return grow(size, locationChildCount, locationName, dice); }

QString familyName(const Node &type) { return familyOf(type.path).name; }

int usualPrice(const Node &type) { return groupOf(type.path).price; }

QString toolDescription(const Node &type, Dice &dice)
{
    QList<int> path = type.path;
    while (path.size() < 5)
        path << dice.below(typeChildCount(path));
    const Sizes &sizes = groupOf(path).sizes;
    QString size = sizeRange(sizes, path[4]);
    if (sizes.step > 0) {
        const QStringList marks = words(sizes.marks);
        const int from = marks[path[4]].toInt() * 10, to = marks[path[4] + 1].toInt() * 10;
        const int tenths = from + dice.below((to - from) / sizes.step + 1) * sizes.step;
        size = QString(sizes.pattern).arg(tenths / 10.0);
    }
    const QString form = words(familyOf(path).forms)[path[2]];
    return QString("%1 %2, %3, %4").arg(form, familyOf(path).name, words(groupOf(path).grades)[path[3]], size);
}
