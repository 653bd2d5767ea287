#include "catalogue/CostBox.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolTip>

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

// A key that is refused is not refused without a word.
void CostBox::keyPressEvent(QKeyEvent *event)
{
    const QString before = lineEdit()->text();
    const bool types = !event->text().isEmpty() && event->text().front().isPrint();
    TypedNumber::keyPressEvent(event);
    if (types && lineEdit()->text() == before)
        QToolTip::showText(mapToGlobal(rect().bottomLeft()),
                           "A price is digits and one point or comma before the decimals, as 85.50 or 85,50.", this);
}
