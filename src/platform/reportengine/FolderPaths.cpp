#include "platform/reportengine/FolderPaths.h"

#include "platform/engine/RowReader.h"

#include <QSet>
#include <QStringList>

QHash<qint64, QString> folderPaths(RowReader &reader, const QString &table, const QString &key)
{
    struct Folder {
        QString name;
        qint64 parent;
    };
    QHash<qint64, Folder> folders;
    reader.read(QStringLiteral("SELECT [%2], [Description], [Parent] FROM [%1]").arg(table, key),
                [&](const std::vector<Value> &row) {
                    folders.insert(row[0].toInteger(), {row[1].toText(), row[2].toInteger()});
                });
    QHash<qint64, QString> paths;
    for (auto folder = folders.cbegin(); folder != folders.cend(); ++folder) {
        QStringList names;
        QSet<qint64> seen;
        qint64 number = folder.key();
        while (folders.contains(number) && !seen.contains(number)) {
            seen.insert(number);
            names.prepend(folders[number].name);
            number = folders[number].parent;
        }
        if (number != 0)
            names.prepend(QStringLiteral("..."));
        paths.insert(folder.key(), names.join('\\'));
    }
    return paths;
}
