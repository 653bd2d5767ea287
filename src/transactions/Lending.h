#pragma once

#include <QString>
#include <QtGlobal>

/// How tools go out and come back, without windows. Each is a step of an AtomicChange: it looks first whether the tool
/// is as its user was shown it and throws a Refusal if not.
namespace Lending {

struct Loan {
    qint16 toolId;
    qint32 jobOrOH;
    qint32 lineItemTypeId;
    QString employee; ///< number of the borrower, Employee.EmpID
};
/// Stores the loan of a tool that is in the crib and flags the tool as out.
void lend(const Loan &loan);

/// Who has a tool. A tool may be flagged as out without a loan: its number is 0 then.
struct OpenLoan {
    qint64 id = 0;
    QString employee = {}; ///< "MILLER ANNA", or the number of an employee whom the suite does not know
    QString dateOut = {};
};
/// The tool's open loan, the last one where it has several.
OpenLoan openLoan(qint16 toolId);

/// Ends every open loan of the tool at the present moment and takes its "out" flag away. `loanShown` is the number of
/// the open loan that the user was shown; another one is not his to end.
void takeBack(qint16 toolId, qint64 loanShown);

/// Looks whether the tool is in the crib, not lent.
void requireInCrib(qint16 toolId);

}
