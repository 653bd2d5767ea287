#include "platform/engine/driver/Value.h"

#include "platform/text/Format.h"
#include "platform/text/Numbers.h"

#include <cmath>
#include <limits>

QString Value::toText() const
{
    if (const auto *text = std::get_if<QString>(&m_value))
        return *text;
    if (const auto *integer = std::get_if<qint64>(&m_value))
        return QString::number(*integer);
    if (const auto *fraction = std::get_if<double>(&m_value))
        return Format::plainNumber(*fraction);
    return {};
}

qint64 Value::toInteger() const
{
    if (const auto *integer = std::get_if<qint64>(&m_value))
        return *integer;
    constexpr double limit = double(std::numeric_limits<qint64>::max());
    const double rounded = std::nearbyint(toNumber());
    return std::fabs(rounded) < limit ? qint64(rounded) : 0;
}

double Value::toNumber() const
{
    if (const auto *text = std::get_if<QString>(&m_value))
        return numberIn(*text).value_or(0);
    if (const auto *integer = std::get_if<qint64>(&m_value))
        return double(*integer);
    if (const auto *fraction = std::get_if<double>(&m_value))
        return *fraction;
    return 0;
}
