#pragma once

#include "catalogue/TypedNumber.h"

#include <QDoubleSpinBox>

/// A price as people type it, on every desktop alike: a point or a comma before the decimals, no sign between
/// thousands, so that 85,50 is never 8550. Shows what was understood when it is left.
class CostBox : public TypedNumber<QDoubleSpinBox>
{
public:
    using TypedNumber::TypedNumber;
    QValidator::State validate(QString &input, int &position) const override;
    double valueFromText(const QString &text) const override;
    QString textFromValue(double value) const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString digitsOf(const QString &input) const;
};
