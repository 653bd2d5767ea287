#include "platform/system/Clock.h"

#include <utility>

namespace {
std::function<QDateTime()> source;
qint64 offset = 0;
}

QDateTime Clock::now() { return source ? source() : QDateTime::currentDateTime().addMSecs(offset); }

void Clock::setOffset(qint64 milliseconds) { offset = milliseconds; }

void Clock::setSource(std::function<QDateTime()> replacement) { source = std::move(replacement); }
