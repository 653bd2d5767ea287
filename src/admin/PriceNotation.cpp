#include "admin/PriceNotation.h"

#include "db/Schema.h"

#include <QRegularExpression>

namespace {

QRegularExpression notation(const char *otherSign, const char *decimalSign)
{
    // 1234, 1,234 and 1,234,567 with one sign throughout; decimals may stand alone.
    const QString whole =
        QString(R"((?<whole>\d{1,3}(?:(?<between>[%1'’ \x{a0}\x{202f}])\d{3}(?:\k<between>\d{3})*)|\d*))");
    return QRegularExpression('^' + whole.arg(otherSign) + QString(R"((?:%1(?<places>\d{0,4})0*)?$)").arg(decimalSign));
}

bool isCurrencySign(QChar c) { return c.category() == QChar::Symbol_Currency; }

}

std::optional<double> priceIn(QStringView text, DecimalSign sign)
{
    static const QRegularExpression withPoint = notation(",", "\\."), withComma = notation(".", ",");
    text = text.trimmed();
    if (!text.isEmpty() && isCurrencySign(text.front()))
        text = text.sliced(1).trimmed();
    else if (!text.isEmpty() && isCurrencySign(text.back()))
        text = text.chopped(1).trimmed();
    const auto match = (sign == DecimalSign::Point ? withPoint : withComma).match(text.toString());
    QString whole = match.captured("whole");
    whole.removeIf([](QChar c) { return !c.isDigit(); });
    const QString places = match.captured("places");
    if (!match.hasMatch() || (whole.isEmpty() && places.isEmpty()))
        return {};
    const double price = (whole + '.' + places + '0').toDouble();
    return price <= Schema::highestTypedPrice ? std::optional(price) : std::nullopt;
}
