#pragma once

#include "platform/engine/Database.h"
#include "platform/gui/KeyedList.h"
#include "platform/system/Progress.h"

#include <QElapsedTimer>
#include <QHash>

class Recordset;
class View;
struct FolderDeletion;

/// The way from a folder up to the root ends before it.
class BrokenChain : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Deletes folders with all below them, and searches a view for a text. It has no window; its owner shows what it
/// reports.
class clsTools : public QObject
{
    Q_OBJECT
public:
    enum class Kind { types, locations };

    using QObject::QObject;

    /// Deletes the folders with their sub-folders, those folders' tools, and the tools with their loans, all or
    /// nothing. `stillAllowed` is asked first, inside the transaction; a text that it gives ends the deletion.
    /// @returns why it could not be done; empty when it was.
    QString Delete(
        Kind kind, const QList<qint32> &folders, const QList<qint32> &tools,
        const std::function<QString()> &stillAllowed = {}, const Progress &progress = [](double) {});
    static FolderDeletion deletionOf(Kind kind, const QList<qint32> &folders, const QList<qint32> &tools);

    /// Searches the view for descriptions that match the pattern `text` (* ? # and lists in brackets stand for
    /// others; none is added) and adds a row with its path for each to `found`. Lets the user interface live on
    /// after every fifth row. @throws EngineError
    void Find(const View &view, const QString &text, KeyedList &found);
    /// Ends a search after the row it is at.
    void stop() { m_searching = false; }
    bool isSearching() const { return m_searching; }
    /// Rows found so far, those included that the list does not show yet.
    int foundCount() const { return m_count; }

    /// The descriptions from the top of the tree to the folder, separated by "\".
    /// @throws BrokenChain "Unable to find the parent record" for a chain that is broken or a circle.
    static QString path(Kind kind, qint32 id);

    // What a view reports its hits by

    using ItemOf = std::function<ListItem(const Recordset &row)>;
    /// Adds an item for each row of the statement that `suits`, until the search is stopped.
    void addRows(const QString &statement, const ItemOf &itemOf,
                 const std::function<bool(const Recordset &)> &suits = {});
    /// Where a folder stands in the tree.
    struct Place {
        QString path; ///< from the root "Tools" on; dots where the way up is broken
        QString shown; ///< the same, or what is wrong with the way up
        QString nodeKey;
    };
    /// It is read once in a search.
    Place placeOf(Kind kind, qint32 folder);

signals:
    /// A row was found.
    void ChangeList();

private:
    static QString path(SelectByNumber &folderOf, qint32 id);
    bool report(ListItem item);
    void showPending();

    bool m_searching = false;
    int m_count = 0;
    KeyedList *m_found = nullptr;
    QHash<qint32, Place> m_places; ///< of the folders that a hit was in
    std::map<Kind, SelectByNumber> m_folderOf; ///< while a search runs
    std::vector<ListItem> m_pending;
    QElapsedTimer m_sinceShown;
};
