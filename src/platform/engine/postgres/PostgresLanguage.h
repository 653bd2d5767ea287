#pragma once

#include "platform/engine/dialect/Language.h"

/// What it calls is made by ServerFunctions.
extern const dialect::Language postgresLanguage;
