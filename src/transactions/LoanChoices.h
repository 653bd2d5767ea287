#pragma once

#include <QString>

/// Who may take a tool and what it may be charged to, as the dialogs list them and the desk looks them up: statements,
/// each narrowed by a `condition` such as "empid=17", if there is one.
namespace LoanChoices {

/// The active employees: "empid" and "Name", which is "MILLER ANNA".
QString employees(const QString &condition = {});
/// The "Name" of an employee, active or not.
QString nameOf(const QString &employeeNumber);
/// The kinds of charge: "Index" and "Code", "Job" or "Overhead".
QString chargeKinds();
/// The open jobs of the suite, by "Jobno". Without the suite its list is out of date: then the program's own, whose
/// rows have an "ID" as well.
QString jobs(const QString &condition = {});
/// The overhead operations: "OperNo" and "Description". `order` is the column that they are sorted by.
QString operations(const QString &order, const QString &condition = {});

/// What a loan is charged to, in words: "Job 12500", or an operation's description.
QString chargeText(qint32 lineItemTypeId, qint32 jobOrOH);

}
