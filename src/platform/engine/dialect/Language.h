#pragma once

#include "platform/engine/dialect/Schema.h"

#include <array>

namespace dialect {

/// How an engine says what translated statements need: one row of text forms for each engine. "%1" onwards stand for
/// what is put in. Where the form depends on what a value holds there is one for each ValueKind, in that order.
struct Language {
    using ByKind = std::array<const char *, 8>;

    ByKind parameter; ///< %1 its number
    ByKind literal; ///< %1 a number or a quoted text
    ByKind asText; ///< the text that the user reads
    ByKind asNumber; ///< fails for a text that is no number
    ByKind byValue; ///< the number that a text stands for; null for one that is none
    ByKind day; ///< the first ten characters of a date, or of what stands for one
    ByKind stored; ///< as a column of the kind holds %1; %2 is the kind's number
    const char *key; ///< by which texts compare and sort
    const char *between; ///< %2 and %3 in either order
    const char *lesser; ///< of two texts that are days or dates; null beside null
    const char *greater;
    const char *like; ///< %2 any pattern
    const char *likePattern; ///< %2 a pattern that is known beforehand, in the form of patternText()
    const char *conditionValue; ///< -1, 0 or null
    const char *arithmetic; ///< %2 the sign
    const char *quotient; ///< null where %2 is 0
    const char *concatenation; ///< null where all parts are null
    const char *upperCase;
    ByKind shortDate;
    const char *currency;
    const char *leastText; ///< of all rows
    const char *greatestText;
    const char *leastOfEqualTexts; ///< which stands for those that compare as equal
    const char *crossJoin;
    const char *ascending; ///< empty values first
    const char *descending; ///< empty values last
    /// A pattern of LIKE in the engine's own form.
    QString (*patternText)(const QString &pattern);
    /// Texts have a comparison of the engine's own, which also decides what is distinct. Otherwise each has a key.
    bool comparesTexts;
    /// A value's kind must be right wherever it stands, and rows that no ORDER BY sorts come in any order.
    bool isTyped;
};

/// `form` with what belongs into it: the first of `parts` for "%1" and so on. What a form leaves out is dropped.
QString filled(const char *form, std::initializer_list<QString> parts);

inline const char *of(const Language::ByKind &forms, ValueKind kind) { return forms[size_t(kind)]; }

/// One form for all kinds.
constexpr Language::ByKind forAll(const char *form) { return {form, form, form, form, form, form, form, form}; }

}
