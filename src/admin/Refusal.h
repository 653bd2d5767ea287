#pragma once

#include <QString>

#include <stdexcept>

/// What ends a command with an exit status of its own, in one sentence.
class Refusal : public std::runtime_error
{
public:
    Refusal(int status, const QString &sentence)
        : std::runtime_error(sentence.toStdString()), m_status(status), m_sentence(sentence)
    {
    }
    int status() const { return m_status; }
    const QString &sentence() const { return m_sentence; }

private:
    int m_status;
    QString m_sentence;
};
