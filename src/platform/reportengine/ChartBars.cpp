#include "platform/reportengine/ChartBars.h"

#include <algorithm>
#include <cmath>
#include <numeric>

std::vector<ChartBar> chartBars(const Chart &chart, const GroupedRecords &records, int row)
{
    const auto groups = records.groupsIn(chart.level, row);
    std::vector<double> values;
    values.reserve(groups.size());
    for (const GroupedRecords::Run &group : groups)
        values.push_back(records.aggregate(chart.value.number, group.first).toNumber());
    std::vector<int> order(groups.size());
    std::iota(order.begin(), order.end(), 0);

    std::vector<GroupedRecords::Run> others;
    if (const int count = chartBarCount(chart, records, row); count < int(groups.size())) {
        const auto firstOther = order.begin() + count - 1;
        std::nth_element(order.begin(), firstOther, order.end(), [&](int a, int b) {
            const double sizeOfA = std::abs(values[a]), sizeOfB = std::abs(values[b]);
            return sizeOfA != sizeOfB ? sizeOfA > sizeOfB : a < b;
        });
        for (auto other = firstOther; other != order.end(); ++other)
            others.push_back(groups[*other]);
        order.erase(firstOther, order.end());
    }
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        return chart.largestFirst && values[a] != values[b] ? values[a] > values[b] : a < b;
    });
    std::vector<ChartBar> bars;
    for (const int group : order)
        bars.push_back(
            {.row = groups[group].first, .value = records.aggregate(chart.value.number, groups[group].first)});
    if (!others.empty())
        bars.push_back({.groups = int(others.size()), .value = records.over(chart.value.number, others)});
    return bars;
}

int chartBarCount(const Chart &chart, const GroupedRecords &records, int row)
{
    return std::min(chart.most, int(records.groupsIn(chart.level, row).size()));
}
