#include "platform/engine/driver/StoredValue.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/DateLiteral.h"
#include "platform/text/Numbers.h"

#include <cmath>
#include <limits>

namespace {

using dialect::ValueKind;

// Money is counted in ten-thousandths, in 64 bits.
constexpr double currencyUnits = 10'000;
constexpr double maximumCurrency = 922'337'203'685'477.0;

void requireWithin(double number, double minimum, double maximum)
{
    if (number < minimum || number > maximum)
        throw EngineError(EngineError::numericOverflow, QStringLiteral("Numeric field overflow."));
}

double numberOf(const Value &value)
{
    if (!value.isText())
        return value.toNumber();
    const std::optional<double> number = numberIn(value.toText());
    if (!number)
        throw EngineError::of(EngineError::typeMismatch);
    return *number;
}

qint64 storedLong(const Value &value)
{
    const double rounded = std::nearbyint(numberOf(value));
    requireWithin(rounded, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    return qint64(rounded);
}

double storedCurrency(const Value &value)
{
    const double amount = numberOf(value);
    requireWithin(amount, -maximumCurrency, maximumCurrency);
    return std::nearbyint(amount * currencyUnits) / currencyUnits;
}

QString storedDateText(const Value &value)
{
    const QString date = value.isText() ? dialect::storedDate(value.toText()) : QString();
    if (date.isEmpty())
        throw EngineError::of(EngineError::typeMismatch);
    return date;
}

int storedYesNo(const Value &value)
{
    if (value.isText())
        throw EngineError::of(EngineError::typeMismatch);
    return value.toBool() ? -1 : 0;
}

}

Value storedValue(const Value &value, ValueKind kind)
{
    if (kind == ValueKind::YesNo)
        return storedYesNo(value);
    if (value.isNull())
        return value;
    switch (kind) {
    case ValueKind::Long:
        return storedLong(value);
    case ValueKind::Number:
        return numberOf(value);
    case ValueKind::Currency:
        return storedCurrency(value);
    case ValueKind::Date:
        return storedDateText(value);
    case ValueKind::Text:
        return value.toText();
    default:
        return value;
    }
}
