#include "platform/system/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QVersionNumber>

namespace {

QString replacedPath;

QString beside() { return QCoreApplication::applicationDirPath(); }

}

QString ProgramFolder::path()
{
    if (!replacedPath.isEmpty())
        return replacedPath;
    const QString crib = qEnvironmentVariable(cribVariable);
    return crib.isEmpty() ? beside() : QDir::cleanPath(QDir(crib).absolutePath());
}

void ProgramFolder::setPath(const QString &folder) { replacedPath = folder; }

QStringList ProgramFolder::folders()
{
    QStringList all{path(), beside(), QDir::cleanPath(beside() + '/' + VORLANE_DATA_FROM_PROGRAMS)};
    all.removeDuplicates();
    return all;
}

QString ProgramFolder::find(const QString &name)
{
    for (const QString &folder : folders())
        if (const QString file = folder + '/' + name; fileExists(file))
            return file;
    return path() + '/' + name;
}

QString ProgramFolder::toNative(const QString &path) { return QString(path).replace('\\', QDir::separator()); }

bool ProgramFolder::fileExists(const QString &path) { return QFileInfo(toNative(path)).isFile(); }

bool ProgramFolder::isDevice(const QString &path, QOperatingSystemVersion::OSType system)
{
    static const QRegularExpression devices(R"((^|[/\\])(con|prn|aux|nul|(com|lpt)[1-9]) *(\.[^/\\]*)?$)",
                                            QRegularExpression::CaseInsensitiveOption);
    return system == QOperatingSystemVersion::Windows && devices.match(path).hasMatch();
}

QString ProgramFolder::version()
{
    const QVersionNumber version = QVersionNumber::fromString(QStringLiteral(VORLANE_VERSION));
    return QStringLiteral("%1.%2.%3")
        .arg(version.majorVersion())
        .arg(version.minorVersion())
        .arg(version.microVersion());
}
