#pragma once

#include "platform/engine/Database.h"

#include <QHash>

/// The folders of types or of locations, by paths such as "Cutting tools\Drills". A path begins at the top, or with any
/// folder, for a name is there once. "/" stands between folders as well, but not in a path that has a "\".
class FolderTree
{
public:
    /// `table` is Types or Locations. Without a database the tree is empty at first.
    explicit FolderTree(const QString &table, Database *database = nullptr);

    /// The number of the folder. What is missing of the path is made. @throws CellFault where it cannot be, as the
    /// windows refuse it
    qint64 at(const QString &path);
    /// Makes the folder, which must not be there yet, unless as one that at() or add() put above another.
    void add(const QString &path);

    /// From the top; empty where there is no such folder.
    QString pathOf(qint64 number) const;
    /// Paths of those that were made, in the order of their numbers.
    QStringList made() const;
    /// Stores them.
    void store(Database &database) const;

private:
    struct Folder {
        QString name;
        qint64 parent = 0;
        bool isAbove = false; ///< only made because another lies in it
    };

    QStringList partsOf(const QString &path) const;
    qint64 child(qint64 parent, const QString &name) const;
    qint64 firstOf(const QString &path, const QString &name) const;
    qint64 make(const QString &name, qint64 parent);

    QString m_table;
    QString m_word;
    QHash<qint64, Folder> m_folders;
    QMultiHash<QString, qint64> m_byName;
    qint64 m_firstMade = 1, m_next = 1;
};
