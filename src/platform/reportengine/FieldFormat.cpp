#include "platform/reportengine/FieldFormat.h"

#include "platform/text/Format.h"
#include "platform/text/TextCompare.h"

#include <QDate>
#include <QLocale>

#include <cmath>

namespace {
constexpr std::pair<QLatin1StringView, FieldFormat> formats[] = {
    {QLatin1StringView("short date"), {FieldFormat::ShortDate}},
    {QLatin1StringView("general date"), {FieldFormat::GeneralDate}},
    {QLatin1StringView("month"), {FieldFormat::Month}},
    {QLatin1StringView("year"), {FieldFormat::Year}},
    {QLatin1StringView("currency"), {FieldFormat::Currency}},
    {QLatin1StringView("number 0"), {FieldFormat::Decimals, 0}},
    {QLatin1StringView("number 1"), {FieldFormat::Decimals, 1}},
    {QLatin1StringView("number 2"), {FieldFormat::Decimals, 2}},
    {QLatin1StringView("number 3"), {FieldFormat::Decimals, 3}},
    {QLatin1StringView("number 4"), {FieldFormat::Decimals, 4}},
    {QLatin1StringView("yes/no"), {FieldFormat::YesNo}},
    {QLatin1StringView("upper"), {FieldFormat::Upper}},
};

/// Money has four places. Rounded to them first, a half goes away from zero even where its binary fraction is a little
/// less.
QString rounded(double number, int decimals)
{
    const double scale = std::pow(10, decimals);
    return QString::number(std::round(std::round(number * 10000) / (10000 / scale)) / scale, 'f', decimals);
}

QString month(const QString &stored)
{
    const QDate day = QDate::fromString(stored.left(10), Qt::ISODate);
    return day.isValid() ? QLocale::c().toString(day, QStringLiteral("MMMM yyyy")) : stored;
}
}

std::optional<FieldFormat> FieldFormat::fromName(QStringView name)
{
    for (const auto &[known, format] : formats)
        if (name.compare(known, Qt::CaseInsensitive) == 0)
            return format;
    return {};
}

bool FieldFormat::suits(FieldKind fieldKind) const
{
    switch (kind) {
    case ShortDate:
    case GeneralDate:
    case Month:
    case Year:
        return fieldKind == FieldKind::DateTime;
    case Currency:
    case Decimals:
    case YesNo:
        return fieldKind == FieldKind::Number || fieldKind == FieldKind::YesNo;
    case Plain:
    case Upper:
        return true;
    }
    Q_UNREACHABLE();
}

QString FieldFormat::apply(const Value &value) const
{
    if (value.isNull())
        return {};
    switch (kind) {
    case Plain:
    case GeneralDate: // a date and time is stored in that very form
        return value.toText();
    case ShortDate:
        return Format::shortDate(value.toText());
    case Month:
        return month(value.toText());
    case Year:
        return value.toText().left(4);
    case Currency:
        return Format::currency(value.toNumber());
    case Decimals:
        return rounded(value.toNumber(), decimals);
    case YesNo:
        return value.toBool() ? QStringLiteral("Yes") : QStringLiteral("No");
    case Upper:
        return upperCase(value.toText());
    }
    Q_UNREACHABLE();
}
