#pragma once

#include <QtGlobal>

/// What has been asked of an engine since the database was opened; tests and measurements read it.
struct Counters {
    qint64 prepared = 0; ///< statements compiled
    qint64 run = 0; ///< statements run
    qint64 rowsFetched = 0;
    qint64 fullScanSteps = 0; ///< steps through a table without an index; an engine far away counts none
    qint64 journeys = 0; ///< to an engine far away and back
};
