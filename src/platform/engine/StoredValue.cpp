#include "platform/engine/StoredValue.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/DateLiteral.h"
#include "platform/text/Numbers.h"

#include <cmath>
#include <limits>

namespace {

// Money is counted in ten-thousandths, in 64 bits.
constexpr double currencyUnits = 10'000;
constexpr double maximumCurrency = 922'337'203'685'477.0;

[[noreturn]] void typeMismatch()
{
    throw EngineError(EngineError::typeMismatch, QStringLiteral("Data type mismatch in criteria expression."));
}

[[noreturn]] void overflow()
{
    throw EngineError(EngineError::numericOverflow, QStringLiteral("Numeric field overflow."));
}

double numberOf(const Value &value)
{
    if (!value.isText())
        return value.toNumber();
    const std::optional<double> number = numberIn(value.toText());
    return number ? *number : (typeMismatch(), 0.0);
}

Value storedLong(const Value &value)
{
    const double rounded = std::nearbyint(numberOf(value));
    if (rounded < std::numeric_limits<qint32>::min() || rounded > std::numeric_limits<qint32>::max())
        overflow();
    return qint64(rounded);
}

Value storedCurrency(const Value &value)
{
    const double amount = numberOf(value);
    if (std::fabs(amount) > maximumCurrency)
        overflow();
    return std::nearbyint(amount * currencyUnits) / currencyUnits;
}

Value storedDateText(const Value &value)
{
    const QString date = value.isText() ? dialect::storedDate(value.toText()) : QString();
    return date.isEmpty() ? (typeMismatch(), Value()) : date;
}

}

Value storedValue(const Value &value, dialect::ValueKind kind)
{
    if (kind == dialect::ValueKind::YesNo)
        return value.isText() ? (typeMismatch(), Value()) : value.toBool() ? -1 : 0;
    if (value.isNull())
        return value;
    switch (kind) {
    case dialect::ValueKind::Long:
        return storedLong(value);
    case dialect::ValueKind::Number:
        return numberOf(value);
    case dialect::ValueKind::Currency:
        return storedCurrency(value);
    case dialect::ValueKind::Date:
        return storedDateText(value);
    case dialect::ValueKind::Text:
        return value.toText();
    default:
        return value;
    }
}
