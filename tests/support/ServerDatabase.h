#pragma once

#include "platform/engine/Workspace.h"
#include "tests/support/Files.h"

#include <QCoreApplication>
#include <QRegularExpression>

/// Where a test runs as NAME.server (see scripts/test_server): a database of its own on the throw-away server, which
/// stands in a connection file where a database file would stand. It is a copy of a model, which `fill` fills once a
/// program.
class ServerDatabase
{
public:
    static bool isWanted() { return qEnvironmentVariableIsSet("VORLANE_TEST_SERVER"); }

    ServerDatabase(const QString &file, const QString &model, void (*fill)(Database &)) : m_file(file)
    {
        static QStringList filled;
        static int count = 0;
        const QString prefix = QString("t%1_").arg(QCoreApplication::applicationPid());
        if (!filled.contains(model)) {
            administer("CREATE DATABASE [" + prefix + model + ']');
            writeConnection(prefix + model);
            fill(*Workspace::first().openDatabase(m_file));
            filled.append(model);
        }
        m_name = prefix + QString::number(++count);
        administer("CREATE DATABASE [" + m_name + "] TEMPLATE [" + prefix + model + ']');
        writeConnection(m_name);
    }
    ~ServerDatabase() { administer("DROP DATABASE [" + m_name + "] WITH (FORCE)"); }
    Q_DISABLE_COPY_MOVE(ServerDatabase)

    /// Runs what tests write for a file: CREATE TABLE with the engine's own types, and INSERT of many rows.
    static void run(Database &database, const QString &statements)
    {
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
    void writeConnection(const QString &database) const
    {
        const QStringList place = qEnvironmentVariable("VORLANE_TEST_SERVER").split(':');
        writeFile(m_file,
                  QString("[postgresql]\nhost=%1\nport=%2\nuser=postgres\ndbname=%3\n")
                      .arg(place.value(0), place.value(1), database)
                      .toUtf8());
    }
    void administer(const QString &statement) const
    {
        writeConnection("postgres");
        Workspace::first().openDatabase(m_file)->executeNative(statement);
    }

    QString m_file;
    QString m_name;
};
