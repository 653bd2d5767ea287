#include "platform/engine/dialect/DateLiteral.h"

#include <QDate>
#include <QTime>

#include <algorithm>
#include <tuple>
#include <vector>

namespace {

struct DatePart {
    int value;
    qsizetype digits;
};

constexpr QStringView monthNames[] = {u"january", u"february", u"march",     u"april",   u"may",      u"june",
                                      u"july",    u"august",   u"september", u"october", u"november", u"december"};

/// 1 to 12 for a month's name or its beginning of three letters and more; 0 for another word.
int monthCalled(QStringView word)
{
    for (int month = 1; word.size() >= 3 && month <= 12; ++month)
        if (monthNames[month - 1].startsWith(word, Qt::CaseInsensitive))
            return month;
    return 0;
}

int fullYear(const DatePart &year)
{
    // Two digits mean 1930 to 2029.
    return year.digits > 2 ? year.value : year.value + (year.value < 30 ? 2000 : 1900);
}

/// Takes a date's text apart into its numbers and words.
class DateReader
{
public:
    explicit DateReader(QStringView text) : m_text(text) { }

    bool read()
    {
        for (skipBlanks(); m_at < m_text.size(); skipBlanks()) {
            const QChar c = m_text[m_at];
            if (c.isDigit() ? !readNumber() : !c.isLetter() || !readWord())
                return false;
        }
        return !m_afterColon;
    }
    QDate date() const
    {
        if (m_dateParts.empty() && m_month == 0)
            return m_timeParts.empty() ? QDate() : QDate(1899, 12, 30);
        if (m_month > 0 && m_dateParts.size() == 2) {
            const auto &[first, second] = std::tie(m_dateParts[0], m_dateParts[1]);
            return first.digits > 2 ? QDate(first.value, m_month, second.value)
                                    : QDate(fullYear(second), m_month, first.value);
        }
        if (m_month > 0 || m_dateParts.size() != 3)
            return {};
        const auto &[first, second, third] = std::tie(m_dateParts[0], m_dateParts[1], m_dateParts[2]);
        if (first.digits > 2)
            return {first.value, second.value, third.value};
        const QDate american(fullYear(third), first.value, second.value);
        return american.isValid() ? american : QDate(fullYear(third), second.value, first.value);
    }
    QTime time() const
    {
        if (m_timeParts.empty())
            return m_half == None ? QTime(0, 0) : QTime();
        if (m_timeParts.size() < 2 || m_timeParts.size() > 3)
            return {};
        int hour = m_timeParts[0];
        if (m_half != None) {
            if (hour < 1 || hour > 12)
                return {};
            hour = hour % 12 + (m_half == Afternoon ? 12 : 0);
        }
        return {hour, m_timeParts[1], m_timeParts.size() == 3 ? m_timeParts[2] : 0};
    }

private:
    enum Half { None, Morning, Afternoon };

    bool take(QStringView characters)
    {
        if (m_at >= m_text.size() || !characters.contains(m_text[m_at]))
            return false;
        ++m_at;
        return true;
    }
    void skipBlanks()
    {
        while (take(u" ,\t"))
            ;
    }
    template<typename Belongs>
    QStringView takeWhile(Belongs belongs)
    {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() && belongs(m_text[m_at]))
            ++m_at;
        return m_text.sliced(begin, m_at - begin);
    }
    bool readNumber()
    {
        const QStringView digits = takeWhile([](QChar c) { return c >= u'0' && c <= u'9'; });
        if (digits.isEmpty() || digits.size() > 4)
            return false;
        const bool colon = take(u":");
        if (colon || m_afterColon) {
            m_timeParts.push_back(digits.toInt());
            m_afterColon = colon;
            return true;
        }
        if (!m_timeParts.empty())
            return false;
        m_dateParts.push_back({digits.toInt(), digits.size()});
        take(u"/-");
        return true;
    }
    bool readWord()
    {
        const QStringView word = takeWhile([](QChar c) { return c.isLetter(); });
        if (word.compare(u"am", Qt::CaseInsensitive) == 0 || word.compare(u"pm", Qt::CaseInsensitive) == 0) {
            m_half = word[0].toLower() == u'a' ? Morning : Afternoon;
            return !m_timeParts.empty();
        }
        const bool separatesTime = word.compare(u"t", Qt::CaseInsensitive) == 0 && !m_dateParts.empty();
        if (separatesTime)
            return true;
        if (m_month > 0)
            return false;
        m_month = monthCalled(word);
        take(u"/-");
        return m_month > 0;
    }

    QStringView m_text;
    qsizetype m_at = 0;
    std::vector<DatePart> m_dateParts;
    std::vector<int> m_timeParts;
    int m_month = 0;
    Half m_half = None;
    bool m_afterColon = false;
};

/// Whether `text` has the stored form already, as most have where many rows are copied.
bool isStoredDate(QStringView text)
{
    constexpr QStringView form = u"0000-00-00 00:00:00";
    const auto fits = [](QChar c, QChar sample) { return sample == u'0' ? c >= u'0' && c <= u'9' : c == sample; };
    if (!std::ranges::equal(text, form, fits))
        return false;
    const auto number = [text](qsizetype from, qsizetype digits) { return text.sliced(from, digits).toInt(); };
    return number(0, 4) >= 100 && QDate::isValid(number(0, 4), number(5, 2), number(8, 2))
        && QTime::isValid(number(11, 2), number(14, 2), number(17, 2));
}

}

QString dialect::storedDate(QStringView text)
{
    if (isStoredDate(text))
        return text.toString();
    DateReader reader(text);
    if (!reader.read())
        return {};
    const QDate date = reader.date();
    const QTime time = reader.time();
    if (!date.isValid() || date.year() < 100 || date.year() > 9999 || !time.isValid())
        return {};
    return QStringLiteral("%1-%2-%3 %4")
        .arg(date.year(), 4, 10, QLatin1Char('0'))
        .arg(date.month(), 2, 10, QLatin1Char('0'))
        .arg(date.day(), 2, 10, QLatin1Char('0'))
        .arg(time.toString(QStringLiteral("HH:mm:ss")));
}
