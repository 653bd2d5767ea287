#pragma once

#include "platform/gui/KeyedList.h"

#include <QElapsedTimer>
#include <QHash>

/// Deletes folders with all below them, and searches a view for a text. It has no window; its owner shows what it
/// reports.
class clsTools : public QObject
{
    Q_OBJECT
public:
    enum class Kind { types, locations };

    using QObject::QObject;

    /// Deletes the folders with their sub-folders, those folders' tools, and the tools with their loans, all or
    /// nothing. @returns why it could not be done; empty when it was.
    QString Delete(Kind kind, QList<qint32> folders, QList<qint32> tools);

    /// Searches the view `mode` for descriptions that match the pattern `text` (* ? # and lists in brackets stand for
    /// others; none is added) and adds a row with its path for each to `found`. Lets the user interface live on
    /// after every fifth row. @throws EngineError; NumberError or std::runtime_error from the walk to the root.
    void Find(const QString &mode, const QString &text, KeyedList &found);
    /// Ends a search after the row it is at.
    void stop() { m_searching = false; }
    bool isSearching() const { return m_searching; }
    /// Rows found so far, those included that the list does not show yet.
    int foundCount() const { return m_count; }

    /// The descriptions from the top of the tree to the folder, separated by "\".
    /// @throws std::runtime_error "Unable to find the parent record" for a chain that is broken or a circle.
    static QString path(Kind kind, qint32 id);

signals:
    /// A row was found.
    void ChangeList();

private:
    bool report(ListItem item);
    void showPending();
    void findFolders(Kind kind, const QString &pattern);
    void findTools(Kind kind, const QString &pattern);
    void findScrapped(const QString &pattern);
    void findCheckedOut(const QString &pattern);
    /// The path to a folder from the root "Tools" on, which is read once in a search.
    QString pathInTree(Kind kind, qint32 id);
    void findRows(const QString &statement, const std::function<ListItem(const class Recordset &)> &itemOf);

    bool m_searching = false;
    int m_count = 0;
    KeyedList *m_found = nullptr;
    QHash<qint32, QString> m_paths; ///< of the folders that a hit was in
    std::vector<ListItem> m_pending;
    QElapsedTimer m_sinceShown;
};
