#pragma once

#include <QList>
#include <QString>

/// How tools go out and come back, without windows. Each is a step of an AtomicChange: it looks first whether the tool
/// is as its user was shown it and throws a Refusal if not.
namespace Lending {

struct Loan {
    qint16 toolId;
    qint32 jobOrOH;
    qint32 lineItemTypeId;
    QString employee; ///< number of the borrower, Employee.EmpID
};
/// What a loan is charged to, Loan::jobOrOH: the number that is shown, else the row's own. Where the program's own list
/// of jobs is offered, the row there has another number than the job; an overhead operation described by digits alone
/// is taken for a job number as well.
/// @throws NumberError where that is no 32-bit number.
qint32 chargedNumber(const QString &shown, const QString &ownNumber);

/// Stores the loan of a tool that is in the crib and flags the tool as out.
void lend(const Loan &loan);
/// Undoes lend(): the loan's row is gone, and the flag.
void undoLoan(qint16 toolId, qint64 loan);

/// Stands for who has a tool that is flagged as out without a loan.
inline constexpr auto nobody = "nobody on record";
/// Who has a tool. A tool may be flagged as out without a loan: its number is 0 then.
struct OpenLoan {
    qint64 id = 0;
    QString employeeNumber = {};
    QString name = {}; ///< "MILLER ANNA"; empty for an employee whom the suite does not know
    QString dateOut = {};
    qint32 jobOrOH = 0;
    qint32 lineItemTypeId = 0;

    /// The name or, where there is none, "employee 17" or `nobody`.
    QString holder() const;
};
/// The tool's open loan, the last one where it has several.
OpenLoan openLoan(qint16 toolId);

/// What takeBack() changed.
struct Return {
    qint16 toolId = 0;
    QList<qint32> loans = {};
    QString dateIn = {};
    bool wasFlagged = false;
};
/// Ends every open loan of the tool at the present moment and takes its "out" flag away. `loanShown` is the number of
/// the open loan that the user was shown; another one is not his to end.
Return takeBack(qint16 toolId, qint64 loanShown);
/// Undoes takeBack(): its loans are open again, and the flag is as it was.
void undoReturn(const Return &made);

/// Looks whether the tool is in the crib, not lent.
void requireInCrib(qint16 toolId);

}
