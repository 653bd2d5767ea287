#pragma once

#include <QDateTime>
#include <QString>

/// The suite's text forms of dates and money. They do not depend on the system's locale, so that
/// what was listed on one machine is found on another. A stored date and time is text "yyyy-mm-dd
/// hh:mm:ss"; an empty one gives "".
namespace Format {

/// Characters of a short date, with which a stored date and time begins.
inline constexpr int shortDateLength = 10;
/// "2026-03-04", the one short date form: text order is time order.
QString shortDate(const QString &stored);
/// "2026-03-04 13:05:09": the default text form of a date and time, which statements put between
/// number signs.
QString generalDate(const QDateTime &when);
/// "mm/dd/yy hh:nn": "03/04/26 13:05".
QString listDate(const QString &stored);
/// "mmm-dd-yyyy hh:nn": "Mar-04-2026 13:05", with English month names.
QString dialogDate(const QDateTime &when);
/// "$1,234.50", negative amounts in brackets.
QString currency(double amount);
/// A plain decimal number for a statement or a box, with a point whatever the locale: "12.5".
QString plainNumber(double number);

/// `text` with places inside words of more than 40 characters where a line may be broken.
QString breakable(const QString &text);

}
