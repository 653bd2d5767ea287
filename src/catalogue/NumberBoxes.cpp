#include "catalogue/NumberBoxes.h"

#include <QRegularExpression>
#include <QWheelEvent>

QString CostBox::digitsOf(const QString &input) const
{
    QString digits = input.trimmed();
    if (digits.startsWith(prefix()))
        digits.remove(0, prefix().size());
    return digits.trimmed().replace(',', '.');
}

QValidator::State CostBox::validate(QString &input, int &) const
{
    const QString digits = digitsOf(input);
    if (digits == "-" && minimum() < 0)
        return QValidator::Intermediate;
    const QRegularExpression plain(QStringLiteral("^-?\\d*(\\.\\d{0,%1})?$").arg(decimals()));
    const double value = digits.toDouble();
    const bool fits = value >= minimum() && value <= maximum() && !(digits.startsWith('-') && minimum() >= 0);
    return plain.match(digits).hasMatch() && fits ? QValidator::Acceptable : QValidator::Invalid;
}

double CostBox::valueFromText(const QString &text) const { return digitsOf(text).toDouble(); }

QString CostBox::textFromValue(double value) const { return QString::number(value, 'f', decimals()); }

void CostBox::focusOutEvent(QFocusEvent *event)
{
    QDoubleSpinBox::focusOutEvent(event);
    setValue(value());
}

void CostBox::wheelEvent(QWheelEvent *event) { event->ignore(); }

QValidator::State QuantityBox::validate(QString &input, int &) const
{
    const QString digits = input.trimmed();
    bool isNumber = digits.isEmpty();
    const int value = isNumber ? 0 : QLocale::c().toInt(digits, &isNumber);
    return isNumber && !digits.contains(',') && value >= minimum() && value <= maximum() ? QValidator::Acceptable
                                                                                         : QValidator::Invalid;
}

int QuantityBox::valueFromText(const QString &text) const { return text.trimmed().toInt(); }

void QuantityBox::focusOutEvent(QFocusEvent *event)
{
    QSpinBox::focusOutEvent(event);
    setValue(value());
}

void QuantityBox::wheelEvent(QWheelEvent *event) { event->ignore(); }
