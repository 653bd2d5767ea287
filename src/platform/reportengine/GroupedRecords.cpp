#include "platform/reportengine/GroupedRecords.h"

#include "platform/text/TextCompare.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace {

/// The place of each key in the order of the different keys. Sorting by places takes few comparisons of texts, however
/// many records share a text.
template<typename Key, typename Compare>
std::vector<int> placesOf(const std::vector<Key> &keys, Compare compare)
{
    QHash<Key, int> numbers;
    std::vector<int> numberOfKey;
    std::vector<Key> different;
    numberOfKey.reserve(keys.size());
    for (const Key &key : keys) {
        const auto known = numbers.constFind(key);
        numberOfKey.push_back(known == numbers.constEnd() ? int(different.size()) : *known);
        if (known == numbers.constEnd()) {
            numbers.insert(key, int(different.size()));
            different.push_back(key);
        }
    }
    std::vector<int> sorted(different.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    std::sort(sorted.begin(), sorted.end(), [&](int a, int b) { return compare(different[a], different[b]) < 0; });

    std::vector<int> placeOfNumber(different.size());
    int place = 0;
    for (size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && compare(different[sorted[i - 1]], different[sorted[i]]) != 0)
            ++place;
        placeOfNumber[sorted[i]] = place;
    }
    for (int &number : numberOfKey)
        number = placeOfNumber[number];
    return numberOfKey;
}

int significantCharacters(Group::Period period)
{
    switch (period) {
    case Group::Year:
        return 4;
    case Group::Month:
        return 7;
    case Group::Day:
        return 10;
    default:
        return -1;
    }
}

bool isNumeric(FieldKind kind) { return kind == FieldKind::Number || kind == FieldKind::YesNo; }

int compareNumbers(double a, double b) { return a < b ? -1 : a > b ? 1 : 0; }

bool precedes(const Value &a, const Value &b, FieldKind kind)
{
    return isNumeric(kind) ? a.toNumber() < b.toNumber() : compareText(a.toText(), b.toText()) < 0;
}

}

void FieldTally::add(const Value &value, FieldKind kind)
{
    if (value.isNull() || (value.isText() && value.toText().isEmpty()))
        return;
    ++m_present;
    if (isNumeric(kind))
        addAmount(value.toNumber());
    stretchTo(value, kind);
}

void FieldTally::add(const FieldTally &other, FieldKind kind)
{
    if (other.m_present == 0)
        return;
    m_present += other.m_present;
    addAmount(other.m_total);
    addAmount(-other.m_lost);
    stretchTo(other.m_smallest, kind);
    stretchTo(other.m_largest, kind);
}

void FieldTally::addAmount(double amount)
{
    const double corrected = amount - m_lost;
    const double next = m_total + corrected;
    m_lost = (next - m_total) - corrected;
    m_total = next;
}

void FieldTally::stretchTo(const Value &value, FieldKind kind)
{
    if (m_smallest.isNull() || precedes(value, m_smallest, kind))
        m_smallest = value;
    if (m_largest.isNull() || precedes(m_largest, value, kind))
        m_largest = value;
}

Value FieldTally::result(Aggregate::Function function) const
{
    if (function == Aggregate::Count)
        return m_present;
    if (m_present == 0)
        return {};
    switch (function) {
    case Aggregate::Sum:
        return m_total;
    case Aggregate::Average:
        return m_total / m_present;
    case Aggregate::Minimum:
        return m_smallest;
    default:
        return m_largest;
    }
}

GroupedRecords::GroupedRecords(const Template &report, std::vector<Value> values, FoldedRecords folded)
    : m_width(report.fields.count()), m_values(std::move(values)), m_folded(std::move(folded))
{
    arrange(report);
    for (const Aggregate &aggregate : report.aggregates) {
        const FieldKind kind = aggregate.field < 0 ? FieldKind::Number : report.fields.at(aggregate.field).kind;
        const int number = int(m_aggregates.size());
        m_aggregates.push_back({aggregate, kind, {}});
        const Run whole{0, count() - 1};
        for (const Run &run : aggregate.level < 0 ? std::span(&whole, 1) : std::span(m_runs[aggregate.level]))
            m_aggregates.back().values.push_back(over(number, std::span(&run, 1)));
    }
}

int GroupedRecords::recordCount() const
{
    return isFolded() ? std::accumulate(m_folded.counts.begin(), m_folded.counts.end(), 0) : count();
}

std::span<const GroupedRecords::Run> GroupedRecords::groupsIn(int level, int row) const
{
    const Run outer = level == 0 ? Run{0, count() - 1} : run(level - 1, row);
    const int first = m_runOfRow[level][outer.first], last = m_runOfRow[level][outer.last];
    return std::span(m_runs[level]).subspan(first, last - first + 1);
}

int GroupedRecords::firstOpening(int row) const
{
    int level = 0;
    while (level < int(m_runs.size()) && run(level, row).first != row)
        ++level;
    return level;
}

int GroupedRecords::firstClosing(int row) const
{
    int level = 0;
    while (level < int(m_runs.size()) && run(level, row).last != row)
        ++level;
    return level;
}

const Value &GroupedRecords::aggregate(int number, int row) const
{
    const int level = m_aggregates[number].aggregate.level;
    return m_aggregates[number].values[level < 0 ? 0 : m_runOfRow[level][row]];
}

/// Empty values come first, as they do where a statement sorts.
GroupedRecords::Ranks GroupedRecords::ranks(int field, FieldKind kind, Group::Period period) const
{
    const int positions = int(m_values.size() / m_width);
    Ranks places;
    if (isNumeric(kind)) {
        std::vector<double> keys(positions);
        for (int i = 0; i < positions; ++i)
            keys[i] = stored(i, field).toNumber();
        places = placesOf(keys, compareNumbers);
    } else {
        std::vector<QString> keys(positions);
        for (int i = 0; i < positions; ++i)
            keys[i] = stored(i, field).toText().left(significantCharacters(period));
        places = placesOf(keys, [](const QString &a, const QString &b) { return compareText(a, b); });
    }
    for (int i = 0; i < positions; ++i)
        if (stored(i, field).isNull())
            places[i] = -1;
    return places;
}

void GroupedRecords::arrange(const Template &report)
{
    m_order.resize(m_width == 0 ? 1 : m_values.size() / m_width);
    std::iota(m_order.begin(), m_order.end(), 0);

    struct Key {
        Ranks ranks;
        bool descending;
    };
    std::vector<Key> keys;
    std::vector<Ranks> groupRanks;
    for (const Group &group : report.groups) {
        if (group.sortField >= 0)
            keys.push_back({ranks(group.sortField, report.fields.at(group.sortField).kind), false});
        groupRanks.push_back(ranks(group.field, report.fields.at(group.field).kind, group.period));
        keys.push_back({groupRanks.back(), false});
    }
    for (const SortField &sort : report.sorting)
        keys.push_back({ranks(sort.field, report.fields.at(sort.field).kind), sort.descending});

    std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
        for (const Key &key : keys)
            if (key.ranks[a] != key.ranks[b])
                return (key.ranks[a] < key.ranks[b]) != key.descending;
        return false;
    });
    findRuns(groupRanks);
}

void GroupedRecords::findRuns(const std::vector<Ranks> &groupRanks)
{
    m_runs.resize(groupRanks.size());
    m_runOfRow.resize(groupRanks.size());
    for (int row = 0; row < count(); ++row) {
        bool opens = row == 0;
        for (size_t level = 0; level < groupRanks.size(); ++level) {
            opens = opens || groupRanks[level][m_order[row]] != groupRanks[level][m_order[row - 1]];
            if (opens)
                m_runs[level].push_back({row, row});
            m_runs[level].back().last = row;
            m_runOfRow[level].push_back(int(m_runs[level].size()) - 1);
        }
    }
}

Value GroupedRecords::over(int number, std::span<const Run> groups) const
{
    const auto &[aggregate, kind, values] = m_aggregates[number];
    const auto summedUp = std::ranges::find(m_folded.fields, aggregate.field) - m_folded.fields.begin();
    int records = 0;
    FieldTally tally;
    for (const Run &run : groups) {
        for (int row = run.first; row <= run.last; ++row) {
            records += isFolded() ? m_folded.counts[m_order[row]] : 1;
            if (aggregate.field < 0)
                continue;
            if (isFolded())
                tally.add(m_folded.tallies[m_order[row] * m_folded.fields.size() + summedUp], kind);
            else
                tally.add(record(row)[aggregate.field], kind);
        }
    }
    return aggregate.field < 0 ? Value(records) : tally.result(aggregate.function);
}
