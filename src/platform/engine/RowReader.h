#pragma once

#include "platform/engine/driver/Value.h"

#include <functional>
#include <memory>
#include <vector>

class Database;

/// Reads results of any size row by row, and keeps none of them. It has a connection to the file of its own, so that
/// what it calls may use the database; the file's state is that of one moment for the life of the object.
class RowReader
{
public:
    /// `pulse` is called many times a second during read(), also while the engine finds no row. What it throws ends the
    /// reading. @throws EngineError as Workspace::openDatabase() does.
    RowReader(const Database &database, std::function<void()> pulse);
    ~RowReader();
    Q_DISABLE_COPY_MOVE(RowReader)

    /// Hands each row of a SELECT to `visit`, which may end the reading by what it throws.
    void read(const QString &statement, const std::function<void(const std::vector<Value> &)> &visit);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
