#include "catalogue/FolderMove.h"

#include "db/Literals.h"
#include "db/Session.h"
#include "transactions/AtomicChange.h"

#include <QSet>

std::optional<MsgBoxCall> FolderMove::refusal() const
{
    if (target != 0 || tools.isEmpty())
        return {};
    return MsgBoxCall{.text = QString("A tool needs a ") + column + ": it cannot be moved to '" + targetText + "'.",
                      .icon = QMessageBox::Information};
}

// Others move and delete folders at the same time: the way from the target up is read, not looked up in the tree.
std::optional<MsgBoxCall> FolderMove::objection() const
{
    QSet<qint32> seen;
    for (qint32 above = target; above != 0;) {
        if (folders.contains(above))
            return MsgBoxCall{.text = "A node can't be made a child of its own children."};
        const Recordset folder =
            openRecordset(QString("SELECT * FROM ") + table + " WHERE id=" + QString::number(above));
        if (folder.isEmpty() || seen.contains(above))
            return MsgBoxCall{.text = "'" + targetText + "' is no longer there.", .icon = QMessageBox::Information};
        seen.insert(above);
        above = qint32(folder.field(u"Parent").toInteger());
    }
    for (const auto &[from, ids] : {std::pair("tools", tools), std::pair(table, folders)}) {
        if (ids.isEmpty())
            continue;
        const QString chosen = QString(" FROM ") + from + " WHERE id IN (" + joined(ids) + ")";
        if (openRecordset("SELECT Count(*) as cnt" + chosen).field(u"cnt").toInteger() < ids.size())
            return MsgBoxCall{.text = "Not all of the items are still there.", .icon = QMessageBox::Information};
        if (from != table && !openRecordset("SELECT id" + chosen + " AND out=-1").isEmpty())
            return MsgBoxCall{.text = mustCheckIn};
    }
    return {};
}

void FolderMove::move() const
{
    if (const auto found = objection())
        throw Refusal(Refusal::othersWereFirst + found->text);
    const QString to = "=" + QString::number(target) + " WHERE ID";
    const QString ids = joined(tools.isEmpty() ? folders : tools);
    execute(!tools.isEmpty() ? QString("UPDATE tools SET ") + column + to + " IN (" + ids + ")"
                : fromTree   ? QString("UPDATE ") + table + " SET parent" + to + "=" + ids
                             : QString("UPDATE ") + table + "  SET parent" + to + " IN (" + ids + ")");
}

std::optional<MsgBoxCall> FolderMove::run() const
{
    for (const bool ofTools : {true, false}) {
        FolderMove part = *this;
        (ofTools ? part.folders : part.tools).clear();
        if (part.folders.isEmpty() && part.tools.isEmpty())
            continue;
        const AtomicChange change = AtomicChange::attempt([&] { part.move(); });
        if (change.outcome != AtomicChange::Done)
            return MsgBoxCall{.text = change.why,
                              .icon = change.outcome == AtomicChange::Failed ? QMessageBox::Critical
                                                                             : QMessageBox::Information};
    }
    return {};
}
