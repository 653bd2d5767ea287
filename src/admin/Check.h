#pragma once

#include "platform/engine/Database.h"

/// The tables and columns that a crib has and `database` lacks, a sentence each.
QStringList missingIn(const Database &database);

/// What `vorlane-admin check` finds in the rows of a sound file, a sentence each.
QStringList faultsIn(Database &database);
