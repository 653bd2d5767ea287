#pragma once

#include "db/Schema.h"
#include "tests/support/ServerDatabase.h"

#include <optional>

/// A crib without rows: a new file, or a database on the server where a test runs as NAME.server.
class EmptyCrib
{
public:
    explicit EmptyCrib(const QString &file)
    {
        if (ServerDatabase::isWanted())
            m_server.emplace(file, "crib", Schema::create);
        else
            Schema::create(*Workspace::first().createDatabase(file));
    }

private:
    std::optional<ServerDatabase> m_server;
};
