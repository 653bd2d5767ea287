#pragma once

#include "platform/gui/MsgBox.h"

#include <QList>

#include <optional>

/// Puts folders below another folder, and tools into it.
struct FolderMove {
    static constexpr auto mustCheckIn = "You must Check In the tool before moving.";

    const char *table; ///< of the folders, "types" or "locations"
    const char *column; ///< of the tools, that names their folder: "type" or "location"
    QList<qint32> folders;
    QList<qint32> tools;
    qint32 target; ///< the folder's number; 0 is the root
    QString targetText;
    bool fromTree; ///< a node of the tree is moved, else items of the list

    /// Why these never belong there: the root holds no tools.
    std::optional<MsgBoxCall> refusal() const;
    /// Why they cannot be moved as the crib is: a folder would lie below itself, a tool is out, something is gone. What
    /// stands in the database decides, not what a window shows.
    std::optional<MsgBoxCall> objection() const;
    /// Moves folders or tools, whichever there are; a step of an AtomicChange. Looks first for an objection.
    void move() const;
    /// Moves the tools, then the folders, each all or none.
    /// @returns why that was not done.
    std::optional<MsgBoxCall> run() const;
};
