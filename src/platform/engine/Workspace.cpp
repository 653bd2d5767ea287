#include "platform/engine/Workspace.h"

#include "platform/engine/DatabasePrivate.h"
#include "platform/engine/postgres/ConnectionFile.h"
#include "platform/engine/sqlite/SqliteDriver.h"
#include "platform/system/ProgramFolder.h"

#include <QFile>
#include <QFileInfo>

#ifdef VORLANE_POSTGRES
#include "platform/engine/postgres/PostgresDriver.h"
#endif

namespace {

constexpr qint64 headerSize = 100;

#ifdef VORLANE_POSTGRES
std::unique_ptr<Driver> serverDriver(const QString &path, const ConnectionFile::Settings &settings, bool ofAnyVersion)
{
    auto driver = std::make_unique<PostgresDriver>(path, settings);
    if (!ofAnyVersion && !driver->isUpToDate())
        throw EngineError(EngineError::connectionFailed,
                          QStringLiteral("Connection to '%1' failed. (The database belongs to another version of this "
                                         "program: run vorlane-admin upgrade.)")
                              .arg(path));
    return driver;
}
#else
std::unique_ptr<Driver> serverDriver(const QString &, const ConnectionFile::Settings &, bool)
{
    throw EngineError::of(EngineError::noServerEngine);
}
#endif

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

std::unique_ptr<Database> Workspace::openDatabase(const QString &path) { return open(path, false); }

std::unique_ptr<Database> Workspace::openOfAnyVersion(const QString &path) { return open(path, true); }

std::unique_ptr<Database> Workspace::open(const QString &path, bool ofAnyVersion)
{
    const QFileInfo file(ProgramFolder::toNative(path));
    if (!file.exists())
        throw EngineError(EngineError::fileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    if (!file.isFile() || !file.isReadable())
        throw EngineError(EngineError::cannotOpenFile,
                          QStringLiteral("The database engine cannot open the file '%1'. It is not a file, or you need "
                                         "permission to view its data.")
                              .arg(path));
    if (const std::optional<ConnectionFile::Settings> settings = ConnectionFile::read(path))
        return opened(path, serverDriver(path, *settings, ofAnyVersion));
    // The engine below takes an empty file, and one of a single byte, for a database without tables.
    if (file.size() < headerSize)
        throw EngineError::of(EngineError::notADatabase, path);
    return opened(path, std::make_unique<SqliteDriver>(path, SqliteDriver::Mode::OpenExisting));
}

bool Workspace::isOnServer(const QString &path) { return ConnectionFile::read(path).has_value(); }

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
