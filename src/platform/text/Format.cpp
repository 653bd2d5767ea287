#include "platform/text/Format.h"

#include <QRegularExpression>

#include <cmath>

QString Format::shortDate(const QString &stored) { return stored.left(shortDateLength); }

QString Format::generalDate(const QDateTime &when) { return when.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

QString Format::listDate(const QString &stored)
{
    const QDateTime when = QDateTime::fromString(stored, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return when.toString(QStringLiteral("MM/dd/yy HH:mm"));
}

QString Format::dialogDate(const QDateTime &when) { return when.toString(QStringLiteral("MMM-dd-yyyy HH:mm")); }

QString Format::currency(double amount)
{
    // Money has four places. Rounded to them first, an amount of half a cent goes up even where its binary fraction is
    // a little less.
    double whole = 0;
    const double fraction = std::modf(std::fabs(amount), &whole);
    int cents = (int(std::round(fraction * 10000)) + 50) / 100;
    if (cents == 100) {
        cents = 0;
        ++whole;
    }
    const bool negative = amount < 0 && (whole > 0 || cents > 0);
    QString digits = QString::number(whole, 'f', 0) + u'.' + QString::number(cents).rightJustified(2, u'0');
    for (qsizetype comma = digits.size() - 6; comma > 0; comma -= 3)
        digits.insert(comma, u',');
    return negative ? QStringLiteral("($%1)").arg(digits) : QStringLiteral("$%1").arg(digits);
}

QString Format::plainNumber(double number)
{
    constexpr int significant = 15;
    const QString shortest = QString::number(number, 'g', significant);
    if (!shortest.contains(u'e'))
        return shortest;
    const int exponent = QStringView(shortest).mid(shortest.indexOf(u'e') + 1).toInt();
    QString plain = QString::number(number, 'f', std::max(0, significant - 1 - exponent));
    while (plain.contains(u'.') && (plain.endsWith(u'0') || plain.endsWith(u'.')))
        plain.chop(1);
    return plain;
}

QString Format::breakable(const QString &text)
{
    constexpr QChar zeroWidthSpace(0x200b);
    static const QRegularExpression longWord(QStringLiteral("(\\S{40})"));
    return QString(text).replace(longWord, QStringLiteral("\\1") + zeroWidthSpace);
}
