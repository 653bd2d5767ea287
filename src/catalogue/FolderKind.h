#pragma once

#include <QString>

/// What differs between the windows of storage locations and those of tool types: names, words and statements. All
/// else is told once, in FolderEditor and SpareFolderList.
struct FolderKind {
    const char *mode; ///< the explorer's word for the tree, "location" or "type"

    const char *editor;
    const char *newCaption;
    const char *editCaption;
    const char *frame;
    const char *textBox;
    const char *numberMessage;
    const char *duplicateMessage;
    const char *noMoreMessage;
    const char *goneMessage;
    // Statements up to the value that follows.
    const char *descriptionOf;
    const char *countNamed;
    const char *idNamed;
    const char *insert;
    const char *rename;

    const char *list;
    const char *listCaption;
    const char *listStatement;
    const char *inUseMessage;
    const char *otherErrorMessage;
    bool &listOpen;

    /// What the folder `id` is called.
    QString description(int id) const;
    bool exists(int id) const;

    static const FolderKind location;
    static const FolderKind type;
};
