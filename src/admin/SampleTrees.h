#pragma once

#include <QStringList>

#include <algorithm>
#include <random>
#include <vector>

/// Random numbers that come out the same with every standard library; its distributions do not.
class Dice
{
public:
    /// From 0 to `count` - 1.
    int below(qint64 count) { return int(m_engine() % quint64(count)); }
    /// Low numbers come up more often.
    int lowBelow(qint64 count) { return std::min(below(count), below(count)); }
    template<typename List>
    const auto &oneOf(const List &list)
    {
        return list[below(std::ssize(list))];
    }

private:
    std::mt19937_64 m_engine;
};

/// A type or a location. Its path holds the place of each ancestor and of itself among their
/// siblings; the root, of number 0 and without a path, is the first of its tree.
struct Node {
    QList<int> path;
    QString name;
    int number = 0;
    int parent = 0;
};

/// Trees of `size` nodes behind the root. A small one is a big one cut short; parents stand before
/// their children.
std::vector<Node> growTypes(int size, Dice &dice);
std::vector<Node> growLocations(int size, Dice &dice);

/// Of a type below the top level: the kind of tool in the singular, "Drill".
QString familyName(const Node &type);
/// Usual price of a tool of the type, in cents.
int usualPrice(const Node &type);
/// A tool of the type, with what the type leaves open drawn: "Jobber Drill, Cobalt, 5.5 mm".
QString toolDescription(const Node &type, Dice &dice);
