#pragma once

#include "platform/engine/driver/Value.h"
#include "platform/reportengine/FieldList.h"

#include <optional>
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

    /// Makes the formula ready for records, now that `fields` knows what its columns hold.
    /// @throws ReportError 20515 where a field is compared with a value of another kind. Only a number may stand for a
    /// text: it compares with the texts that are numbers.
    void bind(const FieldList &fields);

    /// Of the template; 0 for a formula that stands in none.
    int line() const { return m_line; }
    const FormulaCondition &condition() const { return m_root; }
    bool isEmpty() const { return m_root.kind == FormulaCondition::All && m_root.parts.empty(); }
    /// The numbers that `field` has in every record that matches, where the formula is no more than a list of them;
    /// nothing for any other formula, and where a number is too large to be told from its neighbours. Each is given
    /// once, in order. Only after bind().
    std::optional<std::vector<double>> numbersOf(int field) const;
    /// `record` holds a value for each field, by its number. Only after bind().
    bool matches(const Value *record) const;

private:
    FormulaCondition m_root;
    int m_line = 0;
};
