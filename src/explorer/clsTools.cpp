#include "explorer/clsTools.h"

#include "catalogue/FolderDeletion.h"
#include "common/ItemId.h"
#include "db/Literals.h"
#include "db/Session.h"
#include "explorer/View.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QSet>

namespace {

constexpr int rowsBetweenEvents = 5;
constexpr qint64 millisecondsBetweenRepaints = 33;

const char *tableOf(clsTools::Kind kind) { return kind == clsTools::Kind::types ? "types" : "locations"; }

QString rowOfFolder(clsTools::Kind kind) { return QString("SELECT * FROM ") + tableOf(kind) + " WHERE id=0"; }

}

FolderDeletion clsTools::deletionOf(Kind kind, const QList<qint32> &folders, const QList<qint32> &tools)
{
    return {.table = tableOf(kind),
            .column = kind == Kind::types ? "type" : "location",
            .folders = folders,
            .tools = tools};
}

QString clsTools::Delete(Kind kind, const QList<qint32> &folders, const QList<qint32> &tools,
                         const std::function<QString()> &stillAllowed, const Progress &progress)
{
    return deletionOf(kind, folders, tools).run(stillAllowed, progress);
}

void clsTools::Find(const View &view, const QString &text, KeyedList &found)
{
    m_found = &found;
    m_count = 0;
    m_places.clear();
    m_pending.clear();
    m_folderOf.clear();
    m_searching = true;
    m_sinceShown.start();
    const auto end = qScopeGuard([this] {
        m_searching = false;
        m_folderOf.clear();
        showPending();
    });
    view.find(*this, quoted(text));
}

QString clsTools::path(Kind kind, qint32 id)
{
    SelectByNumber folderOf(Session::database(), rowOfFolder(kind));
    return path(folderOf, id);
}

QString clsTools::path(SelectByNumber &folderOf, qint32 id)
{
    QStringList names;
    QSet<qint32> seen;
    while (id != 0) {
        const Recordset row = folderOf.open(id);
        if (row.isEmpty() || seen.contains(id))
            throw BrokenChain("Unable to find the parent record");
        seen.insert(id);
        names.prepend(row.text(u"Description"));
        id = qint32(row.field(u"Parent").toInteger());
    }
    return names.join('\\');
}

void clsTools::addRows(const QString &statement, const ItemOf &itemOf,
                       const std::function<bool(const Recordset &)> &suits)
{
    if (!m_searching)
        return;
    for (Recordset rows = openRecordset(statement); !rows.atEnd(); rows.moveNext())
        if ((!suits || suits(rows)) && !report(itemOf(rows)))
            return;
}

clsTools::Place clsTools::placeOf(Kind kind, qint32 folder)
{
    Place &known = m_places[folder];
    if (!known.path.isEmpty())
        return known;
    known.nodeKey = ItemId{ItemId::folder, folder}.nodeKey();
    try {
        const auto folderOf = m_folderOf.try_emplace(kind, Session::database(), rowOfFolder(kind)).first;
        known.shown = known.path = "Tools\\" + path(folderOf->second, folder);
    } catch (const BrokenChain &broken) {
        known.path = "...";
        known.shown = broken.what(); // one folder that cannot be reached hides no other hit
    }
    return known;
}

// Touching the list for each row would cost more than the search.
bool clsTools::report(ListItem item)
{
    m_pending.push_back(std::move(item));
    ++m_count;
    if (m_sinceShown.elapsed() >= millisecondsBetweenRepaints)
        showPending();
    emit ChangeList();
    if (m_searching && m_count % rowsBetweenEvents == 0)
        QCoreApplication::processEvents();
    return m_searching;
}

void clsTools::showPending()
{
    m_found->addAll(std::exchange(m_pending, {}));
    m_sinceShown.restart();
}
