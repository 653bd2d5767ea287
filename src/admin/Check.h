#pragma once

#include "platform/engine/Database.h"

/// What `vorlane-admin check` finds in a file, a sentence each.
QStringList faultsIn(Database &database);
