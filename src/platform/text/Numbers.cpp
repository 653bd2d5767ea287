#include "platform/text/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

/// Walks over a number's text.
class Reader
{
public:
    explicit Reader(QStringView text) : m_text(text) { }

    bool atEnd() const { return m_at >= m_text.size(); }
    QChar peek(qsizetype ahead = 0) const { return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : QChar(u'\0'); }
    void skipBlanks()
    {
        while (peek().isSpace())
            ++m_at;
    }
    bool take(QChar c)
    {
        if (atEnd() || peek() != c)
            return false;
        ++m_at;
        return true;
    }
    QString digits(bool withCommas = false)
    {
        QString read;
        for (; isDigit(peek()) || (withCommas && !read.isEmpty() && peek() == u','); ++m_at)
            if (peek() != u',')
                read += peek();
        return read;
    }
    /// "e+5" and the like, where digits follow; otherwise nothing is taken.
    QString exponent()
    {
        if (peek().toLower() != u'e')
            return {};
        const bool sign = peek(1) == u'+' || peek(1) == u'-';
        if (!isDigit(peek(sign ? 2 : 1)))
            return {};
        QString read = QStringLiteral("e");
        if (sign)
            read += peek(1);
        m_at += sign ? 2 : 1;
        return read + digits();
    }

private:
    QStringView m_text;
    qsizetype m_at = 0;
};

/// A text of digits alone, as nearly all are: numbers of rows come by the ten thousand.
std::optional<double> plainNumber(QStringView text)
{
    constexpr int exactDigits = 15;
    if (text.isEmpty() || text.size() > exactDigits || !std::all_of(text.begin(), text.end(), isDigit))
        return {};
    qint64 number = 0;
    for (const QChar digit : text)
        number = number * 10 + (digit.unicode() - u'0');
    return double(number);
}

/// Digits, a point, digits and an exponent as a plain number; nothing where there is no digit.
std::optional<double> unsignedNumber(Reader &reader, bool withCommas)
{
    const QString whole = reader.digits(withCommas);
    const QString fraction = reader.take(u'.') ? reader.digits() : QString();
    if (whole.isEmpty() && fraction.isEmpty())
        return {};
    bool valid = false;
    const double number =
        (QLatin1Char('0') + whole + QLatin1Char('.') + fraction + QLatin1Char('0') + reader.exponent())
            .toDouble(&valid);
    return valid && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

template<typename Number, typename Larger>
Number narrowed(Larger number)
{
    if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max())
        throw NumberError(QStringLiteral("Overflow"));
    return Number(number);
}

template<typename Number>
Number converted(const QString &text)
{
    const std::optional<double> number = numberIn(text);
    if (!number)
        throw NumberError(QStringLiteral("Type mismatch"));
    return narrowed<Number>(std::nearbyint(*number));
}

}

std::optional<double> numberIn(QStringView text)
{
    if (const std::optional<double> number = plainNumber(text))
        return number;
    Reader reader(text);
    bool negative = false, sign = false, dollar = false;
    reader.skipBlanks();
    const bool bracket = reader.take(u'(');
    for (bool more = true; more;) {
        reader.skipBlanks();
        more = false;
        if (!sign && !bracket && (reader.peek() == u'-' || reader.peek() == u'+')) {
            negative = reader.take(u'-');
            sign = more = negative || reader.take(u'+');
        } else if (!dollar && reader.take(u'$')) {
            dollar = more = true;
        }
    }
    const std::optional<double> number = unsignedNumber(reader, true);
    if (!number)
        return {};
    reader.skipBlanks();
    if (bracket && !reader.take(u')'))
        return {};
    reader.skipBlanks();
    if (!reader.atEnd())
        return {};
    return negative || bracket ? -*number : *number;
}

bool isNumeric(const QString &text) { return numberIn(text).has_value(); }

double leadingNumber(const QString &text)
{
    QString closed = text;
    closed.removeIf([](QChar c) { return c.isSpace(); });
    Reader reader(closed);
    const bool negative = reader.take(u'-');
    if (!negative)
        reader.take(u'+');
    const double number = unsignedNumber(reader, false).value_or(0);
    return negative ? -number : number;
}

qint16 toInteger(const QString &text) { return converted<qint16>(text); }

qint16 asInteger(qint64 number) { return narrowed<qint16>(number); }

qint32 toLong(const QString &text) { return converted<qint32>(text); }
