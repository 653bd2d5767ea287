#pragma once

#include <QString>

/// The folder that the running program lies in, whatever the current directory is, and what lies beside it.
namespace ProgramFolder {

/// Without a separator at its end, but for the root of a drive.
QString path();
/// Replaces the folder, for tests; an empty text brings the program's own back.
void setPath(const QString &folder);

/// `path` with the system's separators: the suite writes "\" everywhere.
QString toNative(const QString &path);
/// Whether a file of that name exists; `path` may be written with "\".
bool fileExists(const QString &path);

/// The program's version: "major.minor.revision", decimal and unpadded.
QString version();

}
