#pragma once

#include <QByteArray>
#include <QString>

/// What the program remembers of its windows from one run to the next, for each user of the machine. Nothing depends on
/// it: a file that is missing, broken or write-protected is as good as an empty one.
namespace UserSettings {

/// The settings' file in the desktop's place for such files.
QString usualFile();
/// Takes that file; without one, as in tests, nothing is remembered.
void setFile(const QString &path);

/// Empty when nothing is stored under that name.
QByteArray value(const QString &name);
void setValue(const QString &name, const QByteArray &value);

}
