#pragma once

#include "reports/Criterion.h"

#include <vector>

struct ResultsKind;

/// What a query form asks for and how it asks the database.
struct QueryKind {
    const char *name;
    const char *caption;
    /// In the order in which they stand in the form, in the statement and in the formula.
    std::vector<Criterion> criteria;
    const char *statement; ///< up to its WHERE
    const ResultsKind &results; ///< the window that shows what was found

    static const QueryKind frmQueryCheckedOut;
    static const QueryKind frmQueryTypeLoc;
    static const QueryKind frmReportAllTools;
    static const QueryKind frmQueryScrap;
    static const QueryKind frmReportJunkTools;
};
