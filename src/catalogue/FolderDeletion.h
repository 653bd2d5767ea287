#pragma once

#include "platform/gui/MsgBox.h"
#include "platform/system/Progress.h"

#include <QList>
#include <QSet>

#include <optional>

/// Deletes folders with all below them, their tools and those tools' loans, and tools with their loans, in one
/// transaction: all of it or nothing.
struct FolderDeletion {
    const char *table; ///< of the folders, "types" or "locations"
    const char *column; ///< of the tools, that names their folder
    QList<qint32> folders;
    QList<qint32> tools;

    /// Why a user may not delete these: a folder holds sub-folders or tools, a tool is out. What stands in the database
    /// decides, not what a window shows. `fromTree`: the words for a folder of the tree.
    std::optional<MsgBoxCall> objection(bool fromTree) const;

    /// `stillAllowed` is asked inside the transaction, before anything is deleted; a text that it gives ends the
    /// deletion. @returns why it could not be done; empty when it was.
    QString run(
        const std::function<QString()> &stillAllowed = {}, const Progress &progress = [](double) {});

private:
    struct Walk;
    void gather(qint32 folder, Walk &walk);
};
