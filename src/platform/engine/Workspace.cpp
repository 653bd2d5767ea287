#include "platform/engine/Workspace.h"

#include "platform/engine/DatabasePrivate.h"
#include "platform/engine/sqlite/SqliteDriver.h"
#include "platform/system/ProgramFolder.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr qint64 headerSize = 100;

}

Workspace &Workspace::first()
{
    static Workspace workspace;
    return workspace;
}

std::unique_ptr<Database> Workspace::opened(const QString &path, std::unique_ptr<Driver> driver)
{
    return std::unique_ptr<Database>(new Database(std::make_unique<Database::Private>(path, std::move(driver))));
}

std::unique_ptr<Database> Workspace::openDatabase(const QString &path)
{
    const QFileInfo file(ProgramFolder::toNative(path));
    if (!file.exists())
        throw EngineError(EngineError::fileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    if (!file.isFile() || !file.isReadable())
        throw EngineError(EngineError::cannotOpenFile,
                          QStringLiteral("The database engine cannot open the file '%1'. It is not a file, or you need "
                                         "permission to view its data.")
                              .arg(path));
    // The engine below takes an empty file, and one of a single byte, for a database without tables.
    if (file.size() < headerSize)
        throw EngineError::of(EngineError::notADatabase, path);
    return opened(path, std::make_unique<SqliteDriver>(path, SqliteDriver::Mode::OpenExisting));
}

std::unique_ptr<Database> Workspace::createDatabase(const QString &path)
{
    const QString file = ProgramFolder::toNative(path);
    if (QFileInfo::exists(file))
        throw EngineError::of(EngineError::fileExists, path);
    try {
        return opened(path, std::make_unique<SqliteDriver>(path, SqliteDriver::Mode::CreateNew));
    } catch (...) {
        QFile::remove(file);
        throw;
    }
}

Driver &scratchDriver()
{
    static SqliteDriver driver;
    return driver;
}
