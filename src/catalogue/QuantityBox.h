#pragma once

#include <QSpinBox>

/// A number of pieces, digits alone. An emptied box is 0, and the mouse wheel changes nothing.
class QuantityBox : public QSpinBox
{
public:
    using QSpinBox::QSpinBox;
    QValidator::State validate(QString &input, int &position) const override;
    int valueFromText(const QString &text) const override;

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};
