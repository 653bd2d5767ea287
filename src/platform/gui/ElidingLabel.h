#pragma once

#include <QLabel>

/// A label that shortens a text that does not fit, with dots at its end, instead of widening its window.
class ElidingLabel : public QLabel
{
public:
    explicit ElidingLabel(QWidget *parent = nullptr);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
