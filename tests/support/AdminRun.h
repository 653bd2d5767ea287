#pragma once

#include "admin/Admin.h"
#include "tests/support/ServerDatabase.h"

/// One run of vorlane-admin in this process: what it printed and its exit status.
struct AdminRun {
    explicit AdminRun(const QStringList &arguments)
    {
        QTextStream outStream(&out), errorStream(&errors);
        status = runAdmin(arguments, outStream, errorStream);
    }

    QString out;
    QString errors;
    int status;
};

/// Where commands make databases: file names as they are, or, on the server, those of connection files that name an
/// empty database each.
class EmptyPlaces
{
public:
    const QString &operator()(const QString &file)
    {
        if (ServerDatabase::isWanted())
            m_databases.push_back(
                std::make_unique<ServerDatabase>(file, "empty", [](Database &database) { database.upgrade(); }));
        return file;
    }

private:
    std::vector<std::unique_ptr<ServerDatabase>> m_databases;
};
