#include "catalogue/FolderDeletion.h"

#include "db/Literals.h"
#include "db/Session.h"

namespace {

// Parts of a long deletion, so that its progress can be told.
constexpr qsizetype toolsAtOnce = 250;
// Of the time that a tool takes, its history takes nearly all.
constexpr double shareOfHistory = 0.95;

QList<qint32> idsOf(Recordset rows)
{
    QList<qint32> ids;
    for (; !rows.atEnd(); rows.moveNext())
        ids.append(qint32(rows.field(u"id").toInteger()));
    return ids;
}

}

std::optional<MsgBoxCall> FolderDeletion::objection(bool fromTree) const
{
    const QString cannot = QString("You cannot delete ") + table + " which contain ";
    for (const qint32 folder : folders) {
        const QString id = QString::number(folder);
        if (!openRecordset(QString("SELECT id FROM ") + table + " WHERE parent=" + id).isEmpty())
            return MsgBoxCall{.text = fromTree ? cannot + "sub folders."
                                               : "Cannot delete folders that contain sub folders"};
        if (!openRecordset(QString("SELECT Tools.Id FROM Tools WHERE Tools.") + column + '=' + id).isEmpty())
            return MsgBoxCall{.text = cannot + "tools.", .icon = QMessageBox::Information};
    }
    if (!tools.isEmpty()
        && !openRecordset("SELECT Id FROM Tools WHERE Out=-1 AND Id IN (" + joined(tools) + ")").isEmpty())
        return MsgBoxCall{.text = "You must Check In the tool before deleting."};
    return {};
}

struct FolderDeletion::Walk {
    SelectByNumber toolsOf;
    SelectByNumber foldersOf;
    QSet<qint32> seen; ///< ends circles
};

QString FolderDeletion::run(const std::function<QString()> &stillAllowed, const Progress &progress)
{
    QString problem;
    Transaction transaction(Session::database());
    if (stillAllowed)
        problem = stillAllowed();
    if (!problem.isEmpty())
        return problem;
    Walk walk{.toolsOf = {Session::database(), QString("SELECT id FROM tools WHERE ") + column + "=0"},
              .foldersOf = {Session::database(), QString("SELECT id FROM ") + table + " WHERE parent=0"},
              .seen = {folders.begin(), folders.end()}};
    const QList<qint32> chosen = folders;
    for (const qint32 folder : chosen)
        gather(folder, walk);

    const auto step = [&](const QString &rows, const QList<qint32> &ids, const QString &whatFails) {
        try {
            execute("DELETE FROM " + rows + " in (" + joined(ids) + ")");
        } catch (const EngineError &error) {
            problem = "Error: " + whatFails + "\r\nError: " + error.text();
        }
        return problem.isEmpty();
    };
    const auto stepOfTools = [&](const QString &rows, const QString &whatFails, double from, double to) {
        for (qsizetype done = 0; done < tools.size(); done += toolsAtOnce) {
            progress(from + (to - from) * double(done) / double(tools.size()));
            if (!step(rows, tools.mid(done, toolsAtOnce), whatFails))
                return false;
        }
        return true;
    };
    // History, tools, folders: each refers to what goes after it.
    const QString what = QString(table).replace(0, 1, QChar(*table).toUpper());
    if (!stepOfTools("CheckOutIn WHERE tool_id", "Unable to delete Tools related data in the CheckOutIn table.", 0,
                     shareOfHistory)
        || !stepOfTools("tools WHERE id", "Unable to delete Tools data.", shareOfHistory, 1)
        || (!folders.isEmpty() && !step(table + QString(" WHERE id"), folders, "Unable to delete " + what + " data.")))
        return problem;
    transaction.commit();
    return {};
}

// A parent before its children, each subtree whole before the next.
void FolderDeletion::gather(qint32 folder, Walk &walk)
{
    tools.append(idsOf(walk.toolsOf.open(folder)));
    for (const qint32 child : idsOf(walk.foldersOf.open(folder))) {
        if (walk.seen.contains(child))
            continue;
        walk.seen.insert(child);
        folders.append(child);
        gather(child, walk);
    }
}
