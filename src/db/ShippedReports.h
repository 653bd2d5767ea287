#pragma once

#include <vector>

namespace Schema {

/// A report template that a new crib is offered; its file lies beside the program.
struct ShippedReport {
    const char *name;
    const char *fileName;
    const char *description;
};

/// A name under which report templates are offered.
struct ReportModule {
    const char *name;
    /// What the queries of its results window ask for: their formulas need these in the template.
    std::vector<const char *> tables;
    /// The first one is chosen at first.
    std::vector<ShippedReport> reports;
};

/// Those of the results windows, then the two more that the import dialog offers.
const std::vector<ReportModule> &reportModules();

}
