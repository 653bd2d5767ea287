#pragma once

#include <QElapsedTimer>
#include <QString>

/// A line on the terminal that says how far a long command is. It goes with the object; where standard error is no
/// terminal nothing is written.
class ProgressLine
{
public:
    ProgressLine();
    ~ProgressLine();
    Q_DISABLE_COPY_MOVE(ProgressLine)

    void show(const QString &text);

private:
    bool m_isTerminal;
    QElapsedTimer m_sinceShown;
    qsizetype m_width = 0; ///< of what stands there
};
