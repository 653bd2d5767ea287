#include "transactions/ScrapPurge.h"

#include "db/Session.h"
#include "platform/gui/MsgBox.h"
#include "transactions/AtomicChange.h"

bool MainSubs::PurgeScrapped(const QString &kind, qint32 id)
{
    if (kind != "Tool")
        return false;
    const QString scrapId = QString::number(id);
    QStringList problems;
    const auto numbered = [](int number, const QString &text) {
        return QStringLiteral("%1  %2").arg(number).arg(text);
    };
    const AtomicChange change = AtomicChange::attempt([&] {
        const Recordset scrap = openRecordset("Select Scrap.ToolId from Scrap where id=" + scrapId);
        refuseUnless(!scrap.isEmpty(), "The scrapped tool was restored or deleted meanwhile.");
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
    });
    if (change.outcome != AtomicChange::Done)
        problems.append(change.number == 0 ? change.why : numbered(change.number, change.why));
    // Not while the file is held.
    problems.removeDuplicates();
    for (const QString &problem : std::as_const(problems))
        msgBox({.text = problem});
    return problems.isEmpty();
}
