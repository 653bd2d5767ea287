#pragma once

#include "platform/engine/Database.h"

class Driver;

/// Where databases are opened. There is one, the first.
class Workspace
{
public:
    static Workspace &first();

    /// Opens an existing file for reading and writing, shared with others, or the database on a server that a
    /// connection file in its place names. Never creates or migrates one. `path` is kept as it stands; a "\" in it
    /// counts as the system's separator when the file is looked for.
    /// @throws EngineError: no such file (3024), no database (3343), damaged (3049), held by
    /// another process for longer than two seconds (3260); of a server: not reached, or of another version (3151), no
    /// such account (3029), too many users (3239).
    std::unique_ptr<Database> openDatabase(const QString &path);
    /// The same whichever version of this program made it; for Database::upgrade().
    std::unique_ptr<Database> openOfAnyVersion(const QString &path);

    /// Whether `path` is a connection file: a text file that names a database on a server.
    /// @throws EngineError 3343 for one with a fault.
    static bool isOnServer(const QString &path);

    /// Makes a new, empty file and opens it. @throws EngineError 3204 when the file exists.
    std::unique_ptr<Database> createDatabase(const QString &path);

private:
    std::unique_ptr<Database> open(const QString &path, bool ofAnyVersion);
    static std::unique_ptr<Database> opened(const QString &path, std::unique_ptr<Driver> driver);
};
