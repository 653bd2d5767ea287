#pragma once

#include "platform/engine/dialect/Language.h"

extern const dialect::Language sqliteLanguage;

/// The collation and the functions that statements written in it call; registerSqlFunctions() brings them.
namespace SqliteNames {
inline constexpr char collation[] = "VORLANETEXT"; ///< compareText()
inline constexpr char concatenate[] = "vorlane_concatenate";
inline constexpr char number[] = "vorlane_number"; ///< that a text stands for; null for a text that is none
inline constexpr char like[] = "vorlane_like";
inline constexpr char upperCase[] = "vorlane_ucase";
inline constexpr char shortDate[] = "vorlane_short_date";
inline constexpr char currency[] = "vorlane_currency";
inline constexpr char stored[] = "vorlane_stored"; ///< (value, int(ValueKind)): as a column of the kind holds it
inline constexpr char bytes[] = "vorlane_bytes"; ///< that "\x" and hexadecimal digits stand for
}
