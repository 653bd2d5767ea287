#pragma once

#include "tests/support/ServerDatabase.h"

#include <QTemporaryDir>

#include <optional>

/// A new database in a file of its own, or on the server, with what `statements` put into it.
class EngineFile
{
public:
    explicit EngineFile(const QString &statements = {})
    {
        if (ServerDatabase::isWanted()) {
            m_server.emplace(path(), "empty", [](Database &database) { database.upgrade(); });
            m_database = Workspace::first().openDatabase(path());
            ServerDatabase::run(*m_database, statements);
        } else {
            m_database = Workspace::first().createDatabase(path());
            m_database->executeNative("BEGIN;" + statements + ";COMMIT");
        }
    }
    QString path() const { return m_folder.filePath("crib.mdb"); }
    Database *operator->() const { return m_database.get(); }
    Database &operator*() const { return *m_database; }

private:
    QTemporaryDir m_folder;
    std::optional<ServerDatabase> m_server;
    std::unique_ptr<Database> m_database;
};

/// Number of the engine's error that an action ends with, 0 where it ends well; with its text, where asked for.
template<typename Action>
int errorOf(Action action, QString *text = nullptr)
{
    try {
        action();
    } catch (const EngineError &error) {
        if (text)
            *text = error.text();
        return error.number();
    }
    return 0;
}
