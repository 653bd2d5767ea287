#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <functional>

/// Deletes folders with all below them, their tools and those tools' loans, and tools with their loans, in one
/// transaction: all of it or nothing.
struct SubtreeDeletion {
    const char *table; ///< of the folders, "types" or "locations"
    const char *column; ///< of the tools, that names their folder
    QList<qint32> folders;
    QList<qint32> tools;
    /// Run inside the transaction, before anything is deleted; a text that it gives ends the deletion.
    std::function<QString()> objection = {};

    /// @returns why it could not be done; empty when it was.
    QString run();

private:
    void gather(qint32 folder, QSet<qint32> &seen);
};
