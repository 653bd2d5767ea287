#pragma once

#include "queries/Criterion.h"

#include <vector>

struct PrintByKind;
struct ResultsKind;

/// A fixed report that a query form leads to by a key and by the menu of the right mouse button.
struct PrintByEntry {
    const PrintByKind *kind;
    const char *key;
};

/// What a query form asks for and how it asks the database.
struct QueryKind {
    const char *name;
    const char *caption;
    /// In the order in which they stand in the form, in the statement and in the formula.
    std::vector<Criterion> criteria;
    const char *statement; ///< up to its WHERE
    const ResultsKind &results; ///< the window that shows what was found
    std::vector<PrintByEntry> printBy = {};

    static const QueryKind frmQueryCheckedOut;
    static const QueryKind frmQueryTypeLoc;
    static const QueryKind frmReportAllTools;
    static const QueryKind frmQueryScrap;
    static const QueryKind frmReportJunkTools;
};
