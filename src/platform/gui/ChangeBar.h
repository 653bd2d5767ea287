#pragma once

#include "platform/engine/Database.h"
#include "platform/gui/HourGlass.h"
#include "platform/system/Progress.h"
#include "ui_ChangeBar.h"

#include <QElapsedTimer>

#include <optional>

/// A bar with "Stop" over a change of the database that takes longer than half a second. Windows are painted meanwhile,
/// and nothing else can be begun in them.
class ChangeBar : public QDialog
{
    Q_OBJECT
public:
    /// Runs `change`, which tells the progress that it is given. `what` stands over the bar.
    /// @returns whether it came to its end. Otherwise somebody has stopped it, by the button, by Esc or by closing the
    /// bar: what it was at ended by an exception, so that its Transaction took everything back.
    static bool over(Database &database, const QString &what, const std::function<void(const Progress &)> &change);
    ~ChangeBar() override;

    static inline int millisecondsUntilShown = 500;
    Ui::ChangeBar ui;

protected:
    void reject() override;

private:
    ChangeBar(Database &database, const QString &what);
    struct Stopped {
    };
    void beat(Pulse::Phase phase);
    void setDone(double part);

    const HourGlass m_busy;
    std::optional<NormalPointer> m_pointer;
    QElapsedTimer m_sinceStart, m_sincePaint;
    bool m_isStopped = false;
    Pulse m_pulse;
};
