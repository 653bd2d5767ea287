#pragma once

#include <QByteArray>
#include <QString>

/// Adds to a file that is there; the disk has it when this returns. @returns whether; the file is as it was if not.
bool appendSafely(const QString &name, const QByteArray &bytes);
