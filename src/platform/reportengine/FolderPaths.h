#pragma once

#include <QHash>
#include <QString>

class RowReader;

/// The paths of folders, by their numbers: the descriptions from the top down, separated by "\". `table` has
/// Description, Parent, which is 0 at the top, and the counter `key`. A path whose way up is broken or goes round
/// begins with dots.
QHash<qint64, QString> folderPaths(RowReader &reader, const QString &table, const QString &key);
