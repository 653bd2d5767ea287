#pragma once

#include <QOperatingSystemVersion>
#include <QStringList>

/// The crib folder, which holds the database and the shop's own report templates, and what the program brings itself.
namespace ProgramFolder {

/// Names the crib folder; without it a program that was copied somewhere works in its own folder.
inline constexpr auto cribVariable = "VORLANE_CRIB";

/// The crib folder, whatever the current directory is. Without a separator at its end, but for the root of a drive.
QString path();
/// Replaces the folder, for tests; an empty text brings the program's own back.
void setPath(const QString &folder);

/// Where templates and the manual are looked for, first to last: the crib folder, the program's own folder and, of an
/// installed program, the folder of its data.
QStringList folders();
/// The first file of that name in folders(); where there is none, its place in the crib folder.
QString find(const QString &name);

/// `path` with the system's separators: the suite writes "\" everywhere.
QString toNative(const QString &path);
/// Whether a file of that name exists; `path` may be written with "\".
bool fileExists(const QString &path);

/// Whether `path` names a device, so that nothing can be kept in it: on Windows NUL or COM1, in every folder and with
/// any ending.
bool isDevice(const QString &path, QOperatingSystemVersion::OSType system = QOperatingSystemVersion::currentType());

/// The program's version: "major.minor.revision", decimal and unpadded.
QString version();

}
