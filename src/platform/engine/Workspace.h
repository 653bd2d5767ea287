#pragma once

#include "platform/engine/Database.h"

class Driver;

/// Where databases are opened. There is one, the first.
class Workspace
{
public:
    static Workspace &first();

    /// Opens an existing file for reading and writing, shared with others. Never creates or
    /// migrates one. `path` is kept as it stands; a "\" in it counts as the system's separator when
    /// the file is looked for.
    /// @throws EngineError: no such file (3024), no database (3343), damaged (3049), held by
    /// another process for longer than two seconds (3260).
    std::unique_ptr<Database> openDatabase(const QString &path);

    /// Makes a new, empty file and opens it. @throws EngineError 3204 when the file exists.
    std::unique_ptr<Database> createDatabase(const QString &path);

private:
    static std::unique_ptr<Database> opened(const QString &path, std::unique_ptr<Driver> driver);
};
