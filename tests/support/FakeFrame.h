#pragma once

#include "common/MainFrame.h"

#include <QVBoxLayout>

/// A frame that holds one child window and keeps which pop-ups it was asked for.
class FakeFrame : public MainFrame
{
public:
    FakeFrame() { setTheMainFrame(this); }
    ~FakeFrame() override
    {
        delete centralWidget();
        setTheMainFrame(nullptr);
    }

    void showChildWindow(QWidget *child, const QSize &size) override
    {
        setCentralWidget(child);
        resize(size);
        show();
    }
    void bringToFront(QWidget *) override { activateWindow(); }
    void popUp(const QString &menu, const QPoint &, const QStringList &leftOut) override
    {
        popUps.append(leftOut.isEmpty() ? menu : menu + " without " + leftOut.join(','));
    }
    void showStartProgress(int, const QString &) override { }

    QStringList popUps;
};
