#include "platform/system/UserSettings.h"

#include <QSettings>
#include <QStandardPaths>

namespace {
QString file;
}

QString UserSettings::usualFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/vorlane/vorlane.ini";
}

void UserSettings::setFile(const QString &path) { file = path; }

QByteArray UserSettings::value(const QString &name)
{
    return file.isEmpty() ? QByteArray() : QSettings(file, QSettings::IniFormat).value(name).toByteArray();
}

void UserSettings::setValue(const QString &name, const QByteArray &value)
{
    if (!file.isEmpty())
        QSettings(file, QSettings::IniFormat).setValue(name, value);
}
