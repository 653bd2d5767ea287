#pragma once

#include "platform/engine/Database.h"

#include <span>

/// A believable crib for demonstrations, tests and measurements: the same scale gives the same
/// rows on every machine, and nothing in it depends on the clock.
namespace SampleCrib {

/// How many of each there are.
struct Scale {
    const char *name;
    int types;
    int locations;
    int tools;
    int loans;
    int scrapped;
    int employees;
    int jobs;
    int operations;
    int out; ///< loans that are still open
};

std::span<const Scale> scales();

/// Fills `database`, which holds what Schema::create() made. One type and one location have 500
/// tools each (a quarter of the tools in a smaller crib); the type "Drills" and those below it have
/// five of every 32 tools.
void fill(Database &database, const Scale &scale);

}
