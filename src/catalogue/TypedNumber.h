#pragma once

#include <QFocusEvent>
#include <QWheelEvent>

/// What the boxes for a price and for a number of pieces have in common: an emptied box is 0 and shows it when it is
/// left, and the mouse wheel, which somebody meant for the form, changes nothing.
template<typename SpinBox>
class TypedNumber : public SpinBox
{
public:
    using SpinBox::SpinBox;

protected:
    void focusOutEvent(QFocusEvent *event) override
    {
        SpinBox::focusOutEvent(event);
        this->setValue(this->value());
    }
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};
