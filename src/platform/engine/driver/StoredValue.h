#pragma once

#include "platform/engine/dialect/Schema.h"
#include "platform/engine/driver/Value.h"

/// `value` as a column of `kind` holds it: whole 32-bit numbers, money of four places, dates in
/// their stored form, -1 or 0 for yes or no. Halves round to the even neighbour.
/// @throws EngineError: a text that does not convert (3464), a number too large (3349).
Value storedValue(const Value &value, dialect::ValueKind kind);
