#pragma once

#include "platform/gui/HourGlass.h"

#include <QElapsedTimer>
#include <QProgressDialog>

#include <optional>

class Report;

/// A bar with a Cancel button over a step of a report, once it has taken half a second, for the life of the object. The
/// cancelled step ends in 20545.
class RunProgress
{
public:
    RunProgress(Report &report, const QString &title, QWidget *window);
    ~RunProgress();
    Q_DISABLE_COPY_MOVE(RunProgress)

    /// For work that is no step of the report: shows the part that is done, from 0 to 1.
    void show(double done);
    bool isCancelled() const { return m_isCancelled; }

private:
    Report &m_report;
    QString m_title;
    QWidget *m_window;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sincePaint;
    std::optional<NormalPointer> m_pointer;
    std::optional<QProgressDialog> m_dialog;
    bool m_isCancelled = false;
};
