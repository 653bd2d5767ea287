#pragma once

#include <span>

class Crib;

/// One operation that is measured against the floor. Goal and hard limit are ratios to the floor or, where there is
/// none, seconds.
struct Case {
    using Step = void (*)(Crib &);
    /// Processor time of the process, which other programs on the machine hardly change, or, for what waits for the
    /// disk, the time that passes.
    enum Clock { Processor, Wall };
    struct Side {
        Step run = nullptr;
        Step prepare = nullptr; ///< before each run, not timed
    };

    const char *name;
    const char *operation;
    const char *scale; ///< the limits hold there
    double goal;
    double hard;
    Side floor;
    Side ours;
    Clock clock = Processor;
    int repeats = 1; ///< runs a round, for what is over too soon or waits for the disk
};

std::span<const Case> allCases();
/// What a desk waits for when the crib lies on a server: the time that passes, without a floor.
std::span<const Case> serverCases();
