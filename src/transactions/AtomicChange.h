#pragma once

#include <QString>

#include <functional>
#include <stdexcept>

/// Ends a change because the crib is not any more what its user was shown.
class Refusal : public std::runtime_error
{
public:
    explicit Refusal(const QString &words) : std::runtime_error(words.toStdString()) { }

    /// Begins what a look inside the change found that the one before it did not.
    static constexpr auto othersWereFirst = "Somebody else has changed the crib meanwhile: ";
};

/// Throws a Refusal in these words unless `asShown`.
void refuseUnless(bool asShown, const QString &words);

/// What somebody does in the crib, whole or not at all: begin, look, write, commit. Others write to the same file at
/// any time; from the beginning on they wait, so what a look finds still holds for the writes that follow it. Needs no
/// window.
struct AtomicChange {
    enum Outcome { Done, Refused, Failed };
    Outcome outcome = Done;
    QString why = {}; ///< words for the user unless it was done: the refusal's or the engine's
    int number = 0; ///< of the engine's error

    /// Runs `steps` in one transaction. A Refusal or an EngineError takes all of it back and is the outcome; any other
    /// exception takes it back and goes on to the caller.
    static AtomicChange attempt(const std::function<void()> &steps);
    /// Likewise, but every exception goes on to the caller. @throws Refusal, EngineError
    static void make(const std::function<void()> &steps);
};
