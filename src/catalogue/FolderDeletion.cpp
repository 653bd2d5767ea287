#include "catalogue/FolderDeletion.h"

#include "db/Literals.h"
#include "db/Session.h"

namespace {

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

QString FolderDeletion::run(const std::function<QString()> &stillAllowed)
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

    const auto step = [&](const QString &statement, const QString &whatFails) {
        try {
            execute(statement);
        } catch (const EngineError &error) {
            problem = "Error: " + whatFails + "\r\nError: " + error.text();
        }
        return problem.isEmpty();
    };
    // History, tools, folders: each refers to what goes after it.
    if (!tools.isEmpty()) {
        if (!step("DELETE FROM CheckOutIn WHERE tool_id in (" + joined(tools) + ")",
                  "Unable to delete Tools related data in the CheckOutIn table."))
            return problem;
        if (!step("DELETE FROM tools WHERE id in (" + joined(tools) + ")", "Unable to delete Tools data."))
            return problem;
    }
    if (!folders.isEmpty()) {
        const QString what = QString(table).replace(0, 1, QChar(*table).toUpper());
        if (!step(QString("DELETE FROM ") + table + " WHERE id in (" + joined(folders) + ")",
                  "Unable to delete " + what + " data."))
            return problem;
    }
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
