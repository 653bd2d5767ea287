#include "platform/gui/ThrottledProgress.h"

namespace {
constexpr qint64 millisecondsBetweenRepaints = 33;
// Asking the clock costs more than adding one.
constexpr int stepsBetweenLooksAtTheClock = 16;
}

ThrottledProgress::ThrottledProgress(QWidget *parent) : QProgressBar(parent)
{
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    setMinimum(0);
    hide();
}

void ThrottledProgress::start(int maximum, const QString &text)
{
    m_counted = 0;
    setMaximum(maximum);
    setValue(0);
    setFormat(text);
    setTextVisible(!text.isEmpty());
    m_sincePaint.start();
    show();
}

void ThrottledProgress::step()
{
    if (++m_counted % stepsBetweenLooksAtTheClock != 0 || m_sincePaint.elapsed() < millisecondsBetweenRepaints)
        return;
    setValue(m_counted); // paints at once
    m_sincePaint.restart();
}

void ThrottledProgress::finish()
{
    hide();
    setValue(0);
}
