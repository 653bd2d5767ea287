#pragma once

#include "platform/engine/Database.h"

#include <functional>

/// A table as it was copied.
struct CopiedTable {
    QString name;
    qint64 rows;
};

/// Copies the tables of a crib, their rows and counters into a database without tables, within a transaction of the
/// caller's on that. All is read as it is at one moment. What the suite has besides, tables and columns, goes along.
/// `progress` is given what is done at present.
/// @throws Refusal where a table or column is missing, the file is damaged, or `to` would refuse some of the rows.
std::vector<CopiedTable> copyDatabase(Database &from, Database &to,
                                      const std::function<void(const QString &)> &progress);
