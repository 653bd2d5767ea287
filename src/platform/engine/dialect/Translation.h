#pragma once

#include "platform/engine/dialect/Schema.h"
#include "platform/engine/dialect/Statement.h"

namespace dialect {

/// How literals stand in the written statement: as parameters, so that it can be kept and run with other values, or as
/// they are.
enum class Literals { AsParameters, Inline };

/// A literal that is handed over when the translated statement runs.
struct Parameter {
    int literal = -1; ///< its place among the statement's literals
    bool negated = false;
    bool shortDate = false; ///< a date of which the day alone is compared
    bool pattern = false; ///< a pattern of LIKE
    ValueKind storedAs = ValueKind::Unknown; ///< kind of the column that it is stored in or compared with
};

/// A literal whose value the translation depends on. A kept translation serves another statement of the same shape only
/// if that has the same value there.
struct PinnedLiteral {
    int literal;
    QString value;
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
    std::vector<Parameter> parameters; ///< for the statement's own
    std::vector<PinnedLiteral> pinned;
    std::vector<OutputColumn> columns; ///< of a SELECT
    /// That an action writes to, or whose rows can be changed through the SELECT; it then gives the
    /// row's number behind its columns.
    QString table;
    std::vector<Reference> references; ///< of an action
};

}
