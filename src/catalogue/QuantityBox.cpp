#include "catalogue/QuantityBox.h"

QValidator::State QuantityBox::validate(QString &input, int &) const
{
    const QString digits = input.trimmed();
    bool isNumber = digits.isEmpty();
    const int value = isNumber ? 0 : QLocale::c().toInt(digits, &isNumber);
    return isNumber && !digits.contains(',') && value >= minimum() && value <= maximum() ? QValidator::Acceptable
                                                                                         : QValidator::Invalid;
}

int QuantityBox::valueFromText(const QString &text) const { return text.trimmed().toInt(); }
