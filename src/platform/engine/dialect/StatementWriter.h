#pragma once

#include "platform/engine/dialect/Language.h"
#include "platform/engine/dialect/Translation.h"

#include <optional>

namespace dialect {

/// Translates `statement` for the tables of `schema`.
/// @throws EngineError for an unknown table, column or function, and where kinds do not fit.
Translation translate(const Statement &statement, const Schema &schema, Literals literals, const Language &language);

/// Translates a SELECT of the form "... WHERE column = number" without the condition, so that it gives the rows of all
/// numbers: those of one number together, and the number behind the other columns. Nothing for any other SELECT.
std::optional<Translation> translateForAll(Statement statement, const Schema &schema, const Language &language);

/// Translates a condition over one row, whose columns are the statement's parameters and whose literals stand in the
/// text; the statement gives 1 for a row that meets it. @throws EngineError likewise.
QString translateCondition(const Expression &condition, const std::vector<OutputColumn> &columns,
                           const Language &language);

}
