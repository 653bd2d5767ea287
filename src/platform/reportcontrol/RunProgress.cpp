#include "platform/reportcontrol/RunProgress.h"

#include "platform/reportengine/Report.h"

#include <QCoreApplication>

#include <limits>

namespace {
constexpr int millisecondsUntilShown = 500;
constexpr int millisecondsBetweenRepaints = 33;
constexpr int steps = 1000;
}

RunProgress::RunProgress(Report &report, const QString &title, QWidget *window)
    : m_report(report), m_title(title), m_window(window)
{
    m_sinceStart.start();
    m_sincePaint.start();
    report.setProgress([this](double done) {
        show(done);
        if (m_isCancelled)
            m_report.cancel();
    });
}

RunProgress::~RunProgress()
{
    m_report.setProgress([](double) {});
}

void RunProgress::show(double done)
{
    if (m_sinceStart.elapsed() < millisecondsUntilShown || m_sincePaint.elapsed() < millisecondsBetweenRepaints)
        return;
    if (!m_dialog) {
        m_pointer.emplace();
        m_dialog.emplace(m_title, QStringLiteral("Cancel"), 0, steps, m_window);
        m_dialog->setWindowTitle(m_title);
        m_dialog->setWindowModality(Qt::ApplicationModal);
        m_dialog->setMinimumDuration(std::numeric_limits<int>::max());
        m_dialog->setAutoReset(false);
        m_dialog->setAutoClose(false);
        QObject::connect(&*m_dialog, &QProgressDialog::canceled, &*m_dialog, [this] { m_isCancelled = true; });
        m_dialog->show();
    }
    m_dialog->setValue(int(done * steps));
    QCoreApplication::processEvents();
    m_sincePaint.restart();
}
