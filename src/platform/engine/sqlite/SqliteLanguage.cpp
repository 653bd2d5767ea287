#include "platform/engine/sqlite/SqliteLanguage.h"

using dialect::forAll;

// Values bring their kinds along, and dates are texts.
const dialect::Language sqliteLanguage{
    .parameter = forAll("?%1"),
    .literal = forAll("%1"),
    .asText = forAll("%1"),
    // Kinds: Unknown, Null, Text, Long, Number, Currency, YesNo, Date
    .asNumber = {"%1", "%1", "vorlane_stored(%1, 4)", "%1", "%1", "%1", "%1", "%1"},
    .byValue = {"%1", "%1", "vorlane_number(%1)", "%1", "%1", "%1", "%1", "%1"},
    .day = forAll("substr(%1, 1, 10)"),
    .stored = forAll("vorlane_stored(%1, %2)"),
    .key = "%1 COLLATE VORLANETEXT",
    .between = "(%1 BETWEEN min(%2, %3) AND max(%2, %3))",
    .lesser = "min(%1, %2)",
    .greater = "max(%1, %2)",
    .like = "vorlane_like(%1, %2)",
    .likePattern = "vorlane_like(%1, %2)",
    .conditionValue = "(-%1)",
    .arithmetic = "(%1 %2 %3)",
    .quotient = "(%1 * 1.0 / %2)",
    .concatenation = "vorlane_concatenate(%1)",
    .upperCase = "vorlane_ucase(%1)",
    .shortDate = forAll("vorlane_short_date(%1)"),
    .currency = "vorlane_currency(%1)",
    .leastText = "min(%1 COLLATE VORLANETEXT)",
    .greatestText = "max(%1 COLLATE VORLANETEXT)",
    .leastOfEqualTexts = "%1",
    .crossJoin = ", ",
    .ascending = "",
    .descending = " DESC",
    .patternText = [](const QString &pattern) { return pattern; },
    .comparesTexts = true,
    .isTyped = false,
};
