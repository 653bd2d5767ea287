#pragma once

#include <QDateTime>

#include <functional>

/// The present moment, as every date written or shown has it: several desks at one crib go by the clock of the
/// database, so that loans are in order whichever desk stores them. Tests set it.
namespace Clock {

QDateTime now();
/// Milliseconds that the clock to go by is ahead of this machine's.
void setOffset(qint64 milliseconds);
/// Replaces the clock; an empty function brings the system's back.
void setSource(std::function<QDateTime()> source);

}
