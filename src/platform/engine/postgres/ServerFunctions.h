#pragma once

#include <QString>

/// What written statements call on a server, and the kinds of columns of its tables. They are in the server's own
/// language alone, so that any server takes them; their tables of letters are made from compareText(), foldCase() and
/// upperCase(), so that no library of the server has a say in what is equal.
namespace ServerFunctions {

/// Of what creation() makes; the server's vorlane_version() tells it. It goes up with each change of meaning; then
/// indexes by vorlane_key are to be made anew as well.
inline constexpr int version = 2;

/// One native statement that creates everything in the current schema, or brings an older version up to date:
///
/// | kinds | |
/// |---|---|
/// | `yesno`, `currency` | domains: -1 or 0; four places, within the range that a file has |
///
/// | functions | null gives null unless said otherwise |
/// |---|---|
/// | `vorlane_key(text)` | COLLATE "C", sorts and compares as compareText() does |
/// | `vorlane_fold(text)`, `vorlane_ucase(text)` | foldCase(), upperCase() |
/// | `vorlane_like(text, pattern text)` | LikePattern, for patterns that are not known beforehand |
/// | `vorlane_number(text)` | numberIn(), null for a text that is no number |
/// | `vorlane_required_number(text)` | numberIn(), error 22P02 for a text that is no number |
/// | `vorlane_text(double precision or numeric)` | Format::plainNumber() |
/// | `vorlane_date(text)` | dialect::storedDate() as a timestamp, error 22007 for a text that is no date |
/// | `vorlane_concatenate(text, ...)` | without those that are null; null where all are |
/// | `vorlane_short_date(timestamp or text)` | Format::shortDate(); null gives '' |
/// | `vorlane_currency(double precision, numeric or text)` | Format::currency(); null gives '' |
/// | `vorlane_version()` | the number above |
///
/// | triggers, for each statement | |
/// |---|---|
/// | `vorlane_raise_counter('COLUMN')` | after INSERT, NEW TABLE AS added: numbers given by hand are not given again |
/// | `vorlane_changed()` | NEW or OLD TABLE AS changed: NOTIFY vorlane_OID, 'TABLE', with the schema's number |
QString creation();

/// The regular expression which `vorlane_fold(x) COLLATE "C"` matches where x is LIKE `pattern`.
QString regularExpression(const QString &pattern);

}
