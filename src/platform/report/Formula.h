#pragma once

#include "platform/engine/Value.h"
#include "platform/report/FieldList.h"

#include <vector>

/// A constant of a formula. A date is text "yyyy-mm-dd".
struct FormulaConstant {
    enum Kind { Text, Number, Date };
    Kind kind = Text;
    QString text;
    double number = 0;
};

/// One condition of a formula: a comparison of a field, or several conditions joined.
struct FormulaCondition {
    enum Kind {
        All, ///< true when every part is; without parts always
        Any, ///< true when one of the parts is
        Equal,
        NotEqual,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Range, ///< between two constants in either order, both included
        OneOf, ///< equal to one of the constants, which are sorted
    };
    Kind kind = All;
    int field = -1;
    std::vector<FormulaConstant> constants;
    std::vector<FormulaCondition> parts;
};

/// Which records a report prints: conditions over {Table.Column} joined by "and" and "or". Comparing an empty value is
/// never true; texts compare as statements compare them; a date means the whole day.
class Formula
{
public:
    static constexpr int maxLength = 2 * 1024 * 1024;
    static constexpr int maxTerms = 50'000;
    static constexpr int maxBrackets = 64;

    /// The formula that `text` states; an empty text is true for every record. Its fields are added to `fields`, with
    /// the template's line `line`.
    /// @throws ReportError 20515 for a malformed formula, 20509 for a field without a table, 20500 over a limit.
    static Formula parse(const QString &text, FieldList &fields, int line = 0);

    /// Brings the constants into the kind of the fields that they are compared with, now that `fields` knows it.
    /// @throws ReportError 20515 for a text or a date that a number is compared with, and the like.
    void bind(const FieldList &fields);

    /// Of the template; 0 for a formula that stands in none.
    int line() const { return m_line; }
    bool isEmpty() const { return m_root.kind == FormulaCondition::All && m_root.parts.empty(); }
    /// `record` holds a value for each field, by its number. Only after bind().
    bool matches(const Value *record) const;

private:
    FormulaCondition m_root;
    int m_line = 0;
};
