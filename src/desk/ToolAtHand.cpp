#include "desk/ToolAtHand.h"

#include "db/Schema.h"
#include "db/Session.h"
#include "platform/text/Format.h"

namespace {

bool isPossible(qint64 number) { return number > 0 && number <= Schema::highestToolNumber; }

Recordset scrapRecord(qint64 number)
{
    return openRecordset("Select * from Scrap where ToolID=" + QString::number(number) + " order by ID desc");
}

}

QString ToolAtHand::name() const { return 'T' + QString::number(id) + ' ' + description; }

std::optional<ToolAtHand> ToolAtHand::find(qint64 number)
{
    if (!isPossible(number))
        return {};
    const Recordset tool = openRecordset("Select * from Tools where id =" + QString::number(number));
    if (tool.isEmpty())
        return {};
    ToolAtHand found{.id = qint16(number),
                     .description = tool.text(u"Description"),
                     .partNumber = tool.text(u"PartNumber"),
                     .location = qint32(tool.field(u"Location").toInteger()),
                     .isOut = tool.field(u"Out").toBool()};
    found.loan = Lending::openLoan(found.id);
    found.isOut = found.isOut || found.loan.id != 0;
    return found;
}

bool ToolAtHand::isScrapped(qint64 number) { return isPossible(number) && !scrapRecord(number).isEmpty(); }

QString ToolAtHand::whyNot(qint64 number)
{
    if (number < 0 || number > Schema::highestToolNumber)
        return QString("No tool has so high a number. Read its label again.");
    const QString name = 'T' + QString::number(number);
    if (!isScrapped(number))
        return "There is no tool " + name + ". Look at its label, or at the tool explorer.";
    const Recordset scrap = scrapRecord(number);
    return name + ' ' + scrap.text(u"Description") + " was scrapped on " + Format::shortDate(scrap.text(u"ScrapDate"))
        + ". Restore it in the tool explorer, or put it away.";
}
