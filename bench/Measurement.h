#pragma once

#include "bench/Case.h"

#include <QJsonObject>

/// What the counted rounds of a case gave: medians, and of the ratios the extremes as well.
struct Measurement {
    const Case *measured;
    bool isJudged; ///< the crib has the scale that the limits are for
    double floorSeconds = 0;
    double oursSeconds = 0;
    double ratio = 0, lowest = 0, highest = 0; ///< seconds where there is no floor
    double megabytes = 0; ///< that our side's first run needed at its peak

    bool isTooSlow() const { return isJudged && ratio > measured->hard; }
    QString line() const;
    QJsonObject json() const;
};

/// One warm-up round and then `rounds`, floor and ours in turn, so that what else the machine does hits both.
Measurement measure(const Case &what, Crib &crib, bool isJudged, int rounds);
