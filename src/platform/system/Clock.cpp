#include "platform/system/Clock.h"

#include <utility>

namespace {
std::function<QDateTime()> source;
}

QDateTime Clock::now() { return source ? source() : QDateTime::currentDateTime(); }

void Clock::setSource(std::function<QDateTime()> replacement) { source = std::move(replacement); }
