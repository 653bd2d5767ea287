#include "start/CribFolder.h"

#include "platform/engine/Database.h"
#include "platform/engine/EngineError.h"
#include "platform/engine/Workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QOperatingSystemVersion>

QString CribFolder::database(const QString &folder) { return folder + "/dorvak.mdb"; }

QString CribFolder::configuration()
{
    const bool isWindows = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    return (isWindows ? QDir::fromNativeSeparators(qEnvironmentVariable("ProgramData")) : "/etc") + "/vorlane.conf";
}

CribFolder::Found CribFolder::namedIn(const QString &configuration)
{
    constexpr qint64 maximumSize = 64 * 1024;
    QFile file(configuration);
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        return {.fault = QString("'%1' cannot be read: %2.").arg(configuration, file.errorString())};
    QStringList lines;
    for (const QString &line : QString::fromUtf8(file.read(maximumSize)).split('\n'))
        if (const QString text = line.trimmed(); !text.isEmpty() && !text.startsWith('#'))
            lines.append(text);
    if (lines.size() != 1)
        return {.fault = QString("'%1' must have one line, the path of the crib folder; it has %2.")
                             .arg(configuration)
                             .arg(lines.size())};
    if (!QDir::isAbsolutePath(lines.first()))
        return {.fault = QString("'%1' in '%2' is not the whole path of a folder.").arg(lines.first(), configuration)};
    return {.folder = QDir::cleanPath(lines.first())};
}

QString CribFolder::fault(const QString &folder)
{
    if (!QFileInfo(folder).isDir())
        return QString("The folder '%1' is not there. If it lies on a share, see whether that is connected.")
            .arg(folder);
    // The suite's paths are written with it.
    if (QDir::separator() == '/' && folder.contains('\\'))
        return QString("The folder '%1' has a \\ in its name; give it another one.").arg(folder);
    if (!QFileInfo(folder).isReadable() || !QFileInfo(folder).isExecutable())
        return QString("You have no permission to look into the folder '%1'.").arg(folder);
    if (!QFileInfo::exists(database(folder)))
        return QString("There is no crib in the folder '%1': it has no file dorvak.mdb.").arg(folder);
    try {
        Workspace::first().openDatabase(database(folder));
    } catch (const EngineError &error) {
        return error.text();
    }
    return {};
}

bool CribFolder::isReadOnly(const QString &folder)
{
    // A journal is written beside the file.
    return !(QFileInfo(folder).isWritable() && QFileInfo(database(folder)).isWritable())
        && !Workspace::isOnServer(database(folder));
}
