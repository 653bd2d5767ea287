#pragma once

#include <QStringList>
#include <QTextStream>

/// Whether the command of that name takes a QGuiApplication; the others are spared its start-up.
bool needsFonts(const QString &command);

/// vorlane-admin without its process: runs the command that `arguments` (without the program's
/// name) ask for.
/// @returns the exit status: 0, 1 after an error or for faults found, 2 for wrong usage.
int runAdmin(const QStringList &arguments, QTextStream &out, QTextStream &errors);
