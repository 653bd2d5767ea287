#pragma once

#include <QLabel>

/// A label that shortens a text that does not fit, with dots at its end, instead of widening its window. The whole text
/// is its tooltip then.
class ElidingLabel : public QLabel
{
public:
    explicit ElidingLabel(QWidget *parent = nullptr);
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString shownText() const;
};
