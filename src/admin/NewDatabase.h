#pragma once

#include "admin/NewFile.h"
#include "platform/engine/Database.h"

#include <optional>

/// A database in the making, in a new file or in an empty database on a server. All that is put into it is stored by
/// commit(), or nothing.
class NewDatabase
{
public:
    /// `path` is the new file's name, or a connection file.
    /// @throws EngineError 3204 when the file exists, or the database on the server has tables.
    explicit NewDatabase(const QString &path);

    Database *operator->() { return m_database.get(); }
    Database &operator*() { return *m_database; }

    /// Stores everything, and admits attendants. @throws EngineError
    void commit();

private:
    std::optional<NewFile> m_file; ///< none on a server
    std::unique_ptr<Database> m_database;
    std::optional<Transaction> m_transaction;
};
