#pragma once

#include "catalogue/TypedNumber.h"

#include <QSpinBox>

/// A number of pieces, digits alone.
class QuantityBox : public TypedNumber<QSpinBox>
{
public:
    using TypedNumber::TypedNumber;
    QValidator::State validate(QString &input, int &position) const override;
    int valueFromText(const QString &text) const override;
};
