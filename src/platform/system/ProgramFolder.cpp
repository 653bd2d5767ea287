#include "platform/system/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QVersionNumber>

namespace {
QString replacedPath;
}

QString ProgramFolder::path() { return replacedPath.isEmpty() ? QCoreApplication::applicationDirPath() : replacedPath; }

void ProgramFolder::setPath(const QString &folder) { replacedPath = folder; }

QString ProgramFolder::toNative(const QString &path) { return QString(path).replace('\\', QDir::separator()); }

bool ProgramFolder::fileExists(const QString &path) { return QFileInfo(toNative(path)).isFile(); }

QString ProgramFolder::version()
{
    const QVersionNumber version = QVersionNumber::fromString(QStringLiteral(VORLANE_VERSION));
    return QStringLiteral("%1.%2.%3")
        .arg(version.majorVersion())
        .arg(version.minorVersion())
        .arg(version.microVersion());
}
