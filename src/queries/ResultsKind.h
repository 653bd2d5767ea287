#pragma once

#include "platform/gui/BoundGrid.h"

#include <vector>

/// One column of a results window.
struct ResultsColumn {
    const char *heading;
    const char *field;
    /// What a click on the heading appends to the statement; null where it does nothing.
    const char *sort = nullptr;
    /// Likewise for the second click in a row; null where that one is like the first.
    const char *sortDescending = nullptr;
    BoundGrid::Column::Form form = BoundGrid::Column::AsStored;
    /// The field to take where the rows have none of the name above.
    const char *standIn = nullptr;
    /// What the numbers in that field stand for: a statement for ID and Description.
    const char *standInNames = nullptr;
};

/// The report templates that a results window offers.
struct TemplateList {
    const char *statement;
    const char *defaultOne; ///< condition for the one that is chosen at first
    const char *named; ///< condition for the chosen one, up to its name
};

/// How a results window shows what a query form found.
struct ResultsKind {
    const char *name;
    const char *caption;
    const char *grid;
    std::vector<ResultsColumn> columns;
    TemplateList templates;
    /// The formula for selected rows: what stands before the first number and before each further one, and the number's
    /// field.
    const char *firstRow;
    const char *furtherRow;
    const char *number;
    const char *numberStandIn = nullptr;
    /// The templates while the query goes by location, where that makes a difference.
    const TemplateList *templatesByLocation = nullptr;

    static const ResultsKind frmReportToolsOutQresults;
    static const ResultsKind frmReportToolsScrapQresults;
    static const ResultsKind frmReportToolsJunkQresults;
    static const ResultsKind frmEmpQresults;
    static const ResultsKind frmReportAllToolsQresults;
};
