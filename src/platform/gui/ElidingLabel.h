#pragma once

#include <QLabel>

/// A label that shortens a text that does not fit, with dots at its end, instead of widening its window. The whole text
/// is its tooltip then. One that wraps words has the dots in the middle, where its lines are too many for its height.
class ElidingLabel : public QLabel
{
public:
    explicit ElidingLabel(QWidget *parent = nullptr);
    /// Where the dots of a single line are.
    void setElideMode(Qt::TextElideMode mode) { m_mode = mode; }
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString shownText() const;

    Qt::TextElideMode m_mode = Qt::ElideRight;
};
