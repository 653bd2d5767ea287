#pragma once

#include "platform/engine/Workspace.h"
#include "tests/support/Files.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTemporaryDir>

/// Where a test runs as NAME.server (see scripts/test_server): a database of its own on the throw-away server, which
/// stands in a connection file where a database file would stand. It is a copy of a model, which `fill` fills once a
/// program.
class ServerDatabase
{
public:
    static bool isWanted() { return qEnvironmentVariableIsSet("VORLANE_TEST_SERVER"); }

    ServerDatabase(const QString &file, const QString &model, void (*fill)(Database &))
    {
        Server &server = ServerDatabase::server();
        const QString name = Server::prefix() + model;
        if (!server.models.contains(name)) {
            server.administer("CREATE DATABASE [%1]", name);
            server.models.append(name);
            writeConnection(file, name);
            fill(*Workspace::first().openDatabase(file));
        }
        m_name = Server::prefix() + QString::number(++server.count);
        server.administer("CREATE DATABASE [%1] STRATEGY FILE_COPY TEMPLATE [" + name + ']', m_name);
        server.dropDone();
        writeConnection(file, m_name);
    }
    // Whoever was connected is only just going, and the server would wait for that.
    ~ServerDatabase() { server().done.append(m_name); }
    Q_DISABLE_COPY_MOVE(ServerDatabase)

    /// Runs what tests write for a file, there or here: CREATE TABLE with its own types, and INSERT of many rows.
    static void run(Database &database, const QString &statements)
    {
        if (!isWanted())
            return database.executeNative(statements);
        static const QRegularExpression comment("^--.*$", QRegularExpression::MultilineOption);
        static const QRegularExpression end(";\\s*(?=CREATE|INSERT|$)");
        static const QRegularExpression create("^CREATE TABLE (\\w+)\\s*\\((.*)\\)$",
                                               QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression insert("^INSERT INTO (\\w+)(?:\\s*\\(([\\w, ]+)\\))?");
        for (const QString &part : QString(statements).remove(comment).split(end, Qt::SkipEmptyParts)) {
            const QString statement = part.trimmed();
            if (const auto table = create.match(statement); table.hasMatch()) {
                database.createTable(tableOf(table.captured(1), table.captured(2)));
            } else if (const auto rows = insert.match(statement); rows.hasMatch()) {
                const QString columns = rows.captured(2).split(QRegularExpression(",\\s*")).join("],[");
                database.executeNative("INSERT INTO [" + rows.captured(1) + ']'
                                       + (columns.isEmpty() ? QString() : "([" + columns + "])")
                                       + statement.mid(rows.capturedLength()));
            } else if (!statement.isEmpty()) {
                database.executeNative(statement);
            }
        }
    }

private:
    /// Where databases are made; what this program made goes with it.
    struct Server {
        Server()
        {
            writeConnection(folder.filePath("server"), "postgres");
            database = Workspace::first().openDatabase(folder.filePath("server"));
        }
        ~Server()
        {
            done += models;
            dropDone();
        }
        Q_DISABLE_COPY_MOVE(Server)
        static QString prefix() { return QStringLiteral("t%1_").arg(QCoreApplication::applicationPid()); }
        void administer(const QString &statement, const QString &name) const
        {
            database->executeNative(statement.arg(name));
        }
        void dropDone()
        {
            for (const QString &name : std::exchange(done, {}))
                administer("DROP DATABASE [%1] WITH (FORCE)", name);
        }
        const QTemporaryDir folder;
        std::unique_ptr<Database> database;
        QStringList models, done;
        int count = 0;
    };
    static Server &server()
    {
        static Server server;
        return server;
    }
    static void writeConnection(const QString &file, const QString &database)
    {
        const QStringList place = qEnvironmentVariable("VORLANE_TEST_SERVER").split(':');
        const QString lines = "[postgresql]\nhost=%1\nport=%2\ndbname=%3\nuser=postgres\n";
        writeFile(file, lines.arg(place.value(0), place.value(1), database).toUtf8());
    }
    static TableDefinition tableOf(const QString &name, const QString &columns)
    {
        using dialect::ValueKind;
        static const std::pair<const char *, ValueKind> types[] = {
            {"TEXT", ValueKind::Text},     {"CURRENCY", ValueKind::Currency}, {"YESNO", ValueKind::YesNo},
            {"DATETIME", ValueKind::Date}, {"DOUBLE", ValueKind::Number},     {"LONG", ValueKind::Long},
            {"INTEGER", ValueKind::Long}};
        static const QRegularExpression reference("REFERENCES (\\w+)\\((\\w+)\\)");
        TableDefinition table{.name = name, .columns = {}};
        for (const QString &text : columns.split(',')) {
            const QStringList words = text.simplified().remove('"').split(' ');
            const auto type =
                std::ranges::find_if(types, [&](const auto &known) { return words.value(1) == known.first; });
            table.columns.push_back({words.first(), type == std::end(types) ? ValueKind::Text : type->second,
                                     text.contains("AUTOINCREMENT")     ? TableDefinition::Counter
                                         : text.contains("PRIMARY KEY") ? TableDefinition::Key
                                         : text.contains("DEFAULT 0")   ? TableDefinition::Zero
                                         : text.contains("NOT NULL")    ? TableDefinition::Required
                                                                        : TableDefinition::Optional});
            if (const auto other = reference.match(text); other.hasMatch())
                table.foreignKeys.push_back({words.first(), other.captured(1), other.captured(2)});
        }
        return table;
    }

    QString m_name;
};
