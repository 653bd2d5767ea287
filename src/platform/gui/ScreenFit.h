#pragma once

#include <QObject>
#include <QRect>

class QWidget;

/// Keeps every window of the program, with its frame, on its screen, for the life of the object: on small screens and
/// in large fonts no title bar, edge or row of buttons lies outside. What cannot be made small enough is scrolled.
class ScreenFit : public QObject
{
    Q_OBJECT
public:
    ScreenFit();

    /// The part of its screen, in pixels, in which the inside of a window may lie so that its frame is in sight, too.
    static QRect roomFor(const QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
