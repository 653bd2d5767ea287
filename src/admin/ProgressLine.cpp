#include "admin/ProgressLine.h"

#include <QByteArray>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

constexpr int millisecondsBetween = 100;

bool isTerminal(FILE *stream)
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stream));
#else
    return isatty(fileno(stream));
#endif
}

void write(const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
}

}

ProgressLine::ProgressLine() : m_isTerminal(isTerminal(stderr)) { }

ProgressLine::~ProgressLine()
{
    if (m_width > 0)
        write('\r' + QString(m_width, ' ') + '\r');
}

void ProgressLine::show(const QString &text)
{
    if (!m_isTerminal || (m_sinceShown.isValid() && !m_sinceShown.hasExpired(millisecondsBetween)))
        return;
    m_sinceShown.start();
    write('\r' + text.leftJustified(m_width));
    m_width = std::max(m_width, text.size());
}
