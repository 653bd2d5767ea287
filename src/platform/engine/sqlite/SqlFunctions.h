#pragma once

#include "platform/engine/EngineError.h"

#include <optional>

struct sqlite3;

/// Registers the collation and the functions that translated statements call. What a function
/// refuses is put into `refused`, which must live as long as the connection.
void registerSqlFunctions(sqlite3 *connection, std::optional<EngineError> &refused);
