#include "transactions/Lending.h"

#include "db/Literals.h"
#include "db/Session.h"
#include "platform/system/Clock.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"
#include "transactions/AtomicChange.h"
#include "transactions/LoanChoices.h"

namespace {

Recordset openLoans(const QString &toolId)
{
    Recordset loans = openRecordset("Select * from CheckOutIn where Tool_Id= " + toolId + " and active=-1");
    if (!loans.isEmpty())
        loans.moveLast();
    return loans;
}

QList<qint32> numbersOf(const Recordset &loans)
{
    QList<qint32> numbers;
    const int id = loans.fieldIndex(u"ID");
    for (int row = 0; row < loans.recordCount(); ++row)
        numbers.append(qint32(loans.at(row, id).toInteger()));
    return numbers;
}

Recordset existingTool(const QString &id)
{
    Recordset tool = openRecordset("Select * from Tools where id =" + id);
    if (tool.isEmpty()) {
        const bool scrapped = !openRecordset("Select Id from Scrap where ToolId=" + id).isEmpty();
        throw Refusal(scrapped ? "The tool was scrapped meanwhile." : "The tool was deleted meanwhile.");
    }
    return tool;
}

void requireNotLent(const Recordset &tool)
{
    const qint16 id = qint16(tool.field(u"ID").toInteger());
    if (!tool.field(u"Out").toBool() && openLoans(QString::number(id)).isEmpty())
        return;
    const Lending::OpenLoan loan = Lending::openLoan(id);
    throw Refusal("The tool was checked out meanwhile" + (loan.id == 0 ? QString() : ", by " + loan.holder()) + '.');
}

[[noreturn]] void refuseAsOutAgain(qint16 toolId)
{
    throw Refusal("The tool was checked in meanwhile and is out again: " + Lending::openLoan(toolId).holder()
                  + " has it.");
}

}

qint32 Lending::chargedNumber(const QString &shown, const QString &ownNumber)
{
    return toLong(isNumeric(shown) ? shown : ownNumber);
}

void Lending::lend(const Loan &loan)
{
    const QString id = QString::number(loan.toolId);
    Recordset loans = openRecordset("Select * from checkoutin");
    const Recordset tool = existingTool(id);
    requireNotLent(tool);
    execute("Update tools set out=-1 where id=" + id);
    loans.addNew();
    loans.setField(u"Tool_Id", loan.toolId);
    loans.setField(u"jobOrOH", loan.jobOrOH);
    loans.setField(u"LineItemTypeID", loan.lineItemTypeId);
    loans.setField(u"employee", loan.employee);
    loans.setField(u"DateOut", Format::generalDate(Clock::now()));
    loans.setField(u"active", -1);
    loans.setField(u"CheckOutDesc", tool.field(u"Description"));
    loans.setField(u"CheckOutPartNo", tool.field(u"partNumber"));
    loans.update();
}

void Lending::undoLoan(qint16 toolId, qint64 loan)
{
    const QString id = QString::number(toolId);
    existingTool(id);
    const Recordset loans = openLoans(id);
    refuseUnless(!loans.isEmpty(), "The tool was checked in meanwhile.");
    if (loans.recordCount() > 1 || loans.field(u"ID").toInteger() != loan)
        refuseAsOutAgain(toolId);
    execute("Delete from CheckOutIn where ID=" + QString::number(loan));
    execute("Update tools set out=0 where id=" + id);
}

QString Lending::OpenLoan::holder() const
{
    if (id == 0)
        return nobody;
    return name.isEmpty() ? "employee " + employeeNumber : name;
}

Lending::OpenLoan Lending::openLoan(qint16 toolId)
{
    const Recordset loan = openLoans(QString::number(toolId));
    if (loan.isEmpty())
        return {};
    const QString number = QString::number(loan.field(u"employee").toInteger());
    const Recordset employee = openRecordset(LoanChoices::nameOf(number));
    return {.id = loan.field(u"ID").toInteger(),
            .employeeNumber = number,
            .name = employee.isEmpty() ? QString() : employee.text(u"Name"),
            .dateOut = loan.text(u"DateOut"),
            .jobOrOH = qint32(loan.field(u"JobOrOH").toInteger()),
            .lineItemTypeId = qint32(loan.field(u"LineItemTypeId").toInteger())};
}

Lending::Return Lending::takeBack(qint16 toolId, qint64 loanShown)
{
    const QString id = QString::number(toolId);
    const Recordset tool = existingTool(id);
    const Recordset loans = openLoans(id);
    refuseUnless(tool.field(u"Out").toBool() || !loans.isEmpty(), "The tool was checked in meanwhile.");
    if (!loans.isEmpty() && loans.field(u"ID").toInteger() != loanShown)
        refuseAsOutAgain(toolId);
    const QDateTime now = Clock::now();
    execute("Update checkOutIn set DateIn =" + dateLiteral(now) + ", Active=0 where Tool_Id=" + id + " And Active=-1");
    execute("Update tools set out=0 where id=" + id);
    return {.toolId = toolId,
            .loans = numbersOf(loans),
            .dateIn = Format::generalDate(now),
            .wasFlagged = tool.field(u"Out").toBool()};
}

void Lending::undoReturn(const Return &made)
{
    const QString id = QString::number(made.toolId);
    requireNotLent(existingTool(id));
    const QString loans = " where ID in (" + joined(made.loans) + ") and Active=0 and DateIn=#" + made.dateIn + "#";
    if (!made.loans.isEmpty())
        refuseUnless(execute("Update CheckOutIn set DateIn=null, Active=-1" + loans) == made.loans.size(),
                     "Its loan was changed meanwhile.");
    if (made.wasFlagged)
        execute("Update tools set out=-1 where id=" + id);
}

void Lending::requireInCrib(qint16 toolId) { requireNotLent(existingTool(QString::number(toolId))); }
