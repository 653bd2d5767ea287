#include "transactions/LoanChoices.h"

#include "common/ProgramState.h"
#include "db/Schema.h"
#include "db/Session.h"

namespace {

constexpr auto named = "ucase([lastname]) & \" \" & ucase([firstname]) AS Name FROM Employee";

QString also(const QString &condition) { return condition.isEmpty() ? QString() : " and " + condition; }

}

QString LoanChoices::employees(const QString &condition)
{
    return "Select empid," + QString(named) + " Where EmpStatus='Active'" + also(condition) + " order by lastName";
}

QString LoanChoices::nameOf(const QString &employeeNumber)
{
    return "Select " + QString(named) + " Where empid=" + employeeNumber;
}

QString LoanChoices::chargeKinds()
{
    return "Select Index,Code from LineItemType where code ='Job' or code ='Overhead'";
}

QString LoanChoices::jobs(const QString &condition)
{
    if (ProgramState::SuiteInstalled)
        return "Select Jobno from Job where shipped = 0" + also(condition) + " order by jobno desc";
    return "Select ID,Jobno from JobVorlane" + (condition.isEmpty() ? QString() : " where " + condition)
        + " order by jobno desc";
}

QString LoanChoices::operations(const QString &order, const QString &condition)
{
    return "Select OperNo,Description from Operation Where OperType='O'" + also(condition) + " order by " + order;
}

QString LoanChoices::chargeText(qint32 lineItemTypeId, qint32 jobOrOH)
{
    const QString number = QString::number(jobOrOH);
    if (lineItemTypeId != Schema::overheadCharge)
        return "Job " + number;
    const Recordset operation = openRecordset("Select Description from Operation where OperNo =" + number);
    return operation.isEmpty() ? "Operation " + number : operation.text(u"Description");
}
