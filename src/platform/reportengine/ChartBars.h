#pragma once

#include "platform/reportengine/GroupedRecords.h"

/// A bar of a chart: a group, or all of those together that have none of their own.
struct ChartBar {
    int row = -1; ///< the group's first; of the others none
    int groups = 1;
    Value value;
};

/// The bars of a chart in the band of the group that `row` is in. Where there are more groups than bars the largest
/// have one each, and the last one is for the others.
std::vector<ChartBar> chartBars(const Chart &chart, const GroupedRecords &records, int row);
/// How many those are.
int chartBarCount(const Chart &chart, const GroupedRecords &records, int row);
