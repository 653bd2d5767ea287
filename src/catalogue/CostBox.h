#pragma once

#include <QDoubleSpinBox>

/// A price as people type it, on every desktop alike: a point or a comma before the decimals, no sign between
/// thousands, so that 85,50 is never 8550. Shows what was understood when it is left. An emptied box is 0, and the
/// mouse wheel changes nothing.
class CostBox : public QDoubleSpinBox
{
public:
    using QDoubleSpinBox::QDoubleSpinBox;
    QValidator::State validate(QString &input, int &position) const override;
    double valueFromText(const QString &text) const override;
    QString textFromValue(double value) const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QString digitsOf(const QString &input) const;
};
