#include "transactions/ScrapPurge.h"

#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "transactions/AtomicChange.h"

namespace {

QString numbered(int number, const QString &text)
{
    return number == 0 ? text : QStringLiteral("%1  %2").arg(number).arg(text);
}

QStringList purge(qint32 id)
{
    const QString scrapId = QString::number(id);
    const Recordset scrap = openRecordset("Select Scrap.ToolId from Scrap where id=" + scrapId);
    if (scrap.isEmpty())
        return {"The scrapped tool was restored or deleted meanwhile."};
    QStringList problems;
    for (const QString &statement :
         {"Delete from CheckOutIn where tool_id=" + QString::number(scrap.field(u"ToolId").toInteger()),
          "Delete from Scrap where ID=" + scrapId,
          // The record's own number, not its tool's: where a live tool has that number it goes too. The numbers of
          // scrap records start high, so that this seldom comes about.
          "DELETE FROM tools WHERE id=" + scrapId}) {
        try {
            execute(statement);
        } catch (const EngineError &error) {
            problems.append(numbered(error.number(), error.text()));
        }
    }
    return problems;
}

}

QStringList MainSubs::PurgeScrapped(const QList<qint32> &ids, const Progress &progress)
{
    QStringList problems;
    const AtomicChange change = AtomicChange::attempt([&] {
        for (qsizetype done = 0; done < ids.size() && problems.isEmpty(); ++done) {
            progress(double(done) / double(ids.size()));
            problems = purge(ids[done]);
        }
    });
    if (change.outcome != AtomicChange::Done)
        problems.append(numbered(change.number, change.why));
    problems.removeDuplicates();
    return problems;
}

bool MainSubs::PurgeScrapped(const QString &kind, qint32 id)
{
    if (kind != "Tool")
        return false;
    const QStringList problems = PurgeScrapped({id}, [](double) {});
    for (const QString &problem : problems)
        msgBox({.text = problem});
    return problems.isEmpty();
}
