#include "platform/engine/Workspace.h"

#include "platform/engine/DatabasePrivate.h"

#include <QFile>
#include <QFileInfo>

namespace {

[[noreturn]] void cannotOpen(const QString &path)
{
    throw EngineError(EngineError::cannotOpenFile,
                      QStringLiteral("The database engine cannot open the file '%1'.").arg(path));
}

}

Workspace &Workspace::first()
{
    static Workspace workspace;
    return workspace;
}

std::unique_ptr<Database> Workspace::openDatabase(const QString &path)
{
    const QFileInfo file(Connection::nativePath(path));
    if (!file.exists())
        throw EngineError(EngineError::fileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    if (!file.isFile() || !file.isReadable())
        cannotOpen(path);
    // The engine below takes an empty file for a database without tables.
    if (file.size() == 0)
        throw EngineError(EngineError::notADatabase, QStringLiteral("Unrecognized database format '%1'.").arg(path));
    return std::unique_ptr<Database>(new Database(std::make_unique<Database::Private>(path)));
}

std::unique_ptr<Database> Workspace::createDatabase(const QString &path)
{
    const QString native = Connection::nativePath(path);
    if (QFileInfo::exists(native))
        throw EngineError(EngineError::fileExists, QStringLiteral("Database '%1' already exists.").arg(path));
    return std::unique_ptr<Database>(new Database(std::make_unique<Database::Private>(path, true)));
}
