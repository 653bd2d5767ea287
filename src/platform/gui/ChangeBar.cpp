#include "platform/gui/ChangeBar.h"

#include "platform/gui/WindowOwner.h"

#include <QCoreApplication>

#include <utility>

namespace {
constexpr int millisecondsBetweenRepaints = 33;
constexpr int steps = 1000;
}

bool ChangeBar::over(Database &database, const QString &what, const std::function<void(const Progress &)> &change)
{
    ChangeBar bar(database, what);
    try {
        change([&bar](double part) { bar.setDone(part); });
    } catch (const Stopped &) {
        return false;
    }
    return true;
}

ChangeBar::ChangeBar(Database &database, const QString &what)
    : QDialog(windowOwner()), m_pulse(database, [this](Pulse::Phase phase) { beat(phase); })
{
    ui.setupUi(this);
    ui.lblWhat->setText(what);
    m_sinceStart.start();
}

ChangeBar::~ChangeBar()
{
    if (isVisible() && parentWidget())
        parentWidget()->activateWindow();
}

void ChangeBar::setDone(double part)
{
    ui.pB->setRange(0, steps);
    ui.pB->setValue(int(part * steps));
    m_pulse();
}

void ChangeBar::beat(Pulse::Phase phase)
{
    const bool beginsStoring = phase == Pulse::Storing && ui.cmdStop->isEnabled();
    if (beginsStoring) {
        ui.cmdStop->setEnabled(false);
        ui.lblWhat->setText(QStringLiteral("Storing the change, which cannot be stopped..."));
    }
    const bool isDue = isVisible() ? beginsStoring || m_sincePaint.elapsed() >= millisecondsBetweenRepaints
                                   : m_sinceStart.elapsed() >= millisecondsUntilShown;
    if (!isDue)
        return;
    if (!isVisible()) {
        m_pointer.emplace();
        show();
    }
    // Sockets can wait: one of them is the database's own.
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    m_sincePaint.start();
    // Thrown once, as taking back has pulses, too.
    if (std::exchange(m_isStopped, false))
        throw Stopped();
}

void ChangeBar::reject()
{
    if (!ui.cmdStop->isEnabled())
        return;
    m_isStopped = true;
    ui.cmdStop->setEnabled(false);
    ui.lblWhat->setText(QStringLiteral("Stopping..."));
    ui.lblWhat->repaint();
}
