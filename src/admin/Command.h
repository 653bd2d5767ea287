#pragma once

#include <QCommandLineParser>
#include <QTextStream>

#include <functional>
#include <stdexcept>

/// A command line that the command cannot follow.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString &text) : std::runtime_error(text.toStdString()) { }
};

/// One command of vorlane-admin, as the registry lists it.
struct Command {
    QString name;
    /// What must stand behind the name, in this order: "FILE".
    QStringList operands = {};
    QList<QCommandLineOption> options = {};
    /// What it does, for the list of commands: one line.
    QString summary;
    /// What else its own help tells.
    QString details;
    /// Does it. @returns the exit status. @throws EngineError, ReportError, UsageError, Refusal
    std::function<int(const QCommandLineParser &arguments, QTextStream &out)> run;
    /// Whether it draws texts, which takes a QGuiApplication.
    bool needsFonts = false;
    /// The options that must be given.
    QStringList required = {};

    /// "sample FILE [--scale small|shop|max]"
    QString usage() const;
};

Command createCommand();
Command sampleCommand();
Command sqlCommand();
Command checkCommand();
Command backupCommand();
Command copyCommand();
Command upgradeCommand();
Command reportCommand();
Command templateCommand();
Command importCommand();
Command importCsvCommand();
Command exportCommand();
