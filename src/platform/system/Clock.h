#pragma once

#include <QDateTime>

#include <functional>

/// The present moment, as every date written or shown has it. Tests set it.
namespace Clock {

QDateTime now();
/// Replaces the clock; an empty function brings the system's back.
void setSource(std::function<QDateTime()> source);

}
