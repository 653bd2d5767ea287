#include "platform/engine/postgres/PostgresLanguage.h"

#include "platform/engine/postgres/ServerFunctions.h"

// Each parameter says its kind, so that the server need not guess it. Dates stand as texts beside anything else, as in
// a file; those compare byte by byte, whatever order of texts the server has.
// Kinds: Unknown, Null, Text, Long, Number, Currency, YesNo, Date
const dialect::Language postgresLanguage{
    .parameter = {"$%1::text", "$%1::text", "$%1::text", "$%1::bigint", "$%1::double precision", "$%1::numeric",
                  "$%1::smallint", "$%1::timestamp"},
    .literal = {"%1", "%1", "%1::text", "%1", "%1::double precision", "%1", "%1", "%1::timestamp"},
    .asText = {"(%1)::text", "%1::text", "%1", "(%1)::text", "vorlane_text(%1)", "vorlane_text(%1)", "(%1)::text",
               "(to_char(%1, 'YYYY-MM-DD HH24:MI:SS') COLLATE \"C\")"},
    .asNumber = {"%1", "%1::double precision", "vorlane_required_number(%1)", "%1", "%1", "%1", "%1", "%1"},
    .byValue = {"%1", "%1", "vorlane_number(%1)", "%1", "%1", "%1", "%1", "%1"},
    .day = {"left(%1, 10)", "%1::text", "left(%1, 10)", "left((%1)::text, 10)", "left(vorlane_text(%1), 10)",
            "left(vorlane_text(%1), 10)", "left((%1)::text, 10)", "(to_char(%1, 'YYYY-MM-DD') COLLATE \"C\")"},
    .stored = {"%1", "%1", "%1", "(%1)::double precision::integer", "(%1)::double precision",
               "(round((%1)::double precision * 10000) / 10000)::numeric(19, 4)",
               "(CASE WHEN COALESCE(%1, 0) <> 0 THEN -1 ELSE 0 END)", "vorlane_date(%1)"},
    .key = "(vorlane_key(%1) COLLATE \"C\")",
    .between = "(%1 BETWEEN SYMMETRIC %2 AND %3)",
    .lesser = "((CASE WHEN %1 COLLATE \"C\" <= %2 THEN %1 WHEN %2 COLLATE \"C\" < %1 THEN %2 END) COLLATE \"C\")",
    .greater = "((CASE WHEN %1 COLLATE \"C\" >= %2 THEN %1 WHEN %2 COLLATE \"C\" > %1 THEN %2 END) COLLATE \"C\")",
    .like = "vorlane_like(%1, %2)",
    .likePattern = "(vorlane_fold(%1) COLLATE \"C\" ~ %2)",
    .conditionValue = "(-(%1)::integer)",
    .arithmetic = "((%1)::double precision %2 (%3)::double precision)",
    .quotient = "((%1)::double precision / NULLIF((%2)::double precision, 0))",
    .concatenation = "vorlane_concatenate(%1)",
    .upperCase = "vorlane_ucase(%1)",
    .shortDate = {"%1", "''::text", "vorlane_short_date(%1)", "vorlane_short_date((%1)::text)",
                  "vorlane_short_date(vorlane_text(%1))", "vorlane_short_date(vorlane_text(%1))",
                  "vorlane_short_date((%1)::text)", "vorlane_short_date(%1)"},
    .currency = "vorlane_currency(%1)",
    .leastText = "(array_agg(%1 ORDER BY vorlane_key(%1) COLLATE \"C\"))[1]",
    .greatestText = "(array_agg(%1 ORDER BY vorlane_key(%1) COLLATE \"C\" DESC NULLS LAST))[1]",
    .leastOfEqualTexts = "min(%1 COLLATE \"C\")",
    .crossJoin = " CROSS JOIN ",
    .ascending = " NULLS FIRST",
    .descending = " DESC NULLS LAST",
    .patternText = ServerFunctions::regularExpression,
    .comparesTexts = false,
    .isTyped = true,
};
