#pragma once

#include "platform/engine/dialect/Schema.h"
#include "platform/engine/dialect/Statement.h"

namespace dialect {

/// The collation and the functions that a written statement calls; the engine registers them.
namespace names {
inline constexpr char collation[] = "VORLANETEXT"; ///< compareText()
inline constexpr char concatenate[] = "vorlane_concatenate";
inline constexpr char like[] = "vorlane_like";
inline constexpr char upperCase[] = "vorlane_ucase";
inline constexpr char shortDate[] = "vorlane_short_date";
inline constexpr char currency[] = "vorlane_currency";
inline constexpr char toNumber[] = "vorlane_number"; ///< a text as a number, else a type mismatch
inline constexpr char stored[] = "vorlane_stored"; ///< a value as a column of a kind holds it: (value, int(ValueKind))
}

/// A literal that is handed over when the translated statement runs.
struct Parameter {
    int literal; ///< its place among the statement's literals
    bool negated = false;
    bool shortDate = false; ///< a date that is compared with a short date's text
    ValueKind column = ValueKind::Unknown; ///< kind of the column that it is stored in
};

struct OutputColumn {
    QString name;
    ValueKind kind;
};

/// A value that an action puts into a column which refers to another table.
struct Reference {
    ForeignKey key;
    QString value; ///< as the translated statement has it
};

/// A statement in the language of the engine below.
struct Translation {
    Statement::Kind kind = Statement::SelectRows;
    QString sql;
    std::vector<Parameter> parameters; ///< for "?1" onwards
    /// Literals whose values went into `sql`: another statement of the same shape is translated alike
    /// only where it has these same values there.
    std::vector<std::pair<int, QString>> pinned;
    std::vector<OutputColumn> columns; ///< of a SELECT
    QString table; ///< that an action writes to, or whose rows can be changed through the SELECT
    std::vector<Reference> references; ///< of an action
};

/// Whether literals become parameters of the statement, as they do where it is kept, or stand in it.
enum class Literals { AsParameters, Inline };

/// Translates `statement` for the tables of `schema`. A SELECT over one whole table gives the row's
/// number behind its columns.
/// @throws EngineError for an unknown table, column or function, and where kinds do not fit.
Translation translate(const Statement &statement, const Schema &schema, Literals literals);

/// Translates a condition over one row, whose columns are "?1" onwards and whose literals stand in
/// the text; the statement gives 1 for a row that meets it.
QString translateCondition(const Expression &condition, const std::vector<OutputColumn> &columns);

}
