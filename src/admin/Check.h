#pragma once

#include "platform/engine/Database.h"

/// What `vorlane-admin check` finds in the rows of a sound file, a sentence each.
QStringList faultsIn(Database &database);
