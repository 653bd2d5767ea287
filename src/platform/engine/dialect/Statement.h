#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace dialect {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

/// A node of a condition or of a computed value.
struct Expression {
    enum Kind {
        Integer,
        Fraction,
        Text,
        Date,
        YesNo,
        Null,
        Column,
        AllColumns, ///< "*", "Tools.*" or the star of Count(*)
        Negation,
        Arithmetic,
        Concatenation,
        Comparison,
        Not,
        And, ///< any number of operands
        Or, ///< likewise
        Like,
        Between,
        In, ///< the value, then the list
        IsNull,
        Call,
    };
    Kind kind;
    QString text; ///< the literal's value, the operator, or the name of the column or function
    QString qualifier; ///< the table before a column's name or a star
    bool bracketed = false; ///< a column's name that stands in brackets and may hold its table
    bool negated = false; ///< NOT LIKE and the like; a number below 0
    bool wholeDay = false; ///< a date without a time
    int literal = -1; ///< which of the statement's literals it is
    int depth = 1; ///< how many nodes lie below one another
    std::vector<ExpressionPtr> operands;

    bool isLiteral() const { return kind <= YesNo; }
};

/// A table of a FROM clause, or two sides joined.
struct Source {
    enum Join { NoJoin, Comma, Inner, Left, Right };
    Join join = NoJoin;
    QString table, alias;
    std::unique_ptr<Source> left, right;
    ExpressionPtr condition;

    bool isTable() const { return join == NoJoin; }
};

struct Output {
    ExpressionPtr value;
    QString alias;
};

struct OrderKey {
    ExpressionPtr value;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    std::vector<Output> outputs;
    std::unique_ptr<Source> from;
    ExpressionPtr where;
    std::vector<OrderKey> order;
};

struct Statement {
    enum Kind { SelectRows, Insert, Update, Delete };
    Kind kind = SelectRows;
    std::unique_ptr<Select> select; ///< of the rows, or of what an INSERT stores
    QString table;
    std::vector<QString> columns;
    std::vector<ExpressionPtr> values; ///< what an INSERT or UPDATE puts into the columns
    ExpressionPtr where;
};

}
