#pragma once

#include <QString>

#include <stdexcept>

/// Why a Jet file cannot be read, in one sentence that goes on behind the file's name: "is no Jet database".
class JetError : public std::runtime_error
{
public:
    enum Cause {
        CannotRead, ///< not there, no file, no permission
        NotADatabase,
        NewerFormat,
        WrongPassword,
        Damaged,
    };

    JetError(Cause cause, const QString &text)
        : std::runtime_error(text.toStdString()), m_cause(cause), m_text(text) { }
    Cause cause() const { return m_cause; }
    const QString &text() const { return m_text; }

    static JetError damaged(const QString &what) { return {Damaged, "is damaged: " + what}; }

private:
    Cause m_cause;
    QString m_text;
};
