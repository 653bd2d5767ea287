#pragma once

#include <QString>

#include <stdexcept>

/// What a print run returns: 0, or the number by which the suite's table of messages knows the failure.
namespace ResultCode {
enum Code : int {
    ok = 0,
    outOfMemory = 20500, ///< or over a limit of the engine: terms, rows, pages
    reportNotFound = 20504,
    invalidDestination = 20505,
    invalidFileName = 20507,
    invalidFieldName = 20509,
    invalidSortDirection = 20511,
    invalidPrinter = 20513,
    fileExists = 20514,
    errorInFormula = 20515,
    invalidSummaryField = 20521,
    jobBusy = 20524,
    cannotLoadReport = 20525,
    noDefaultPrinter = 20526,
    diskFull = 20529,
    fileError = 20530,
    cannotOpenDatabase = 20533,
    databaseError = 20534,
    tableNotFound = 20537,
    cancelled = 20545,
    invalidPageNumber = 20550,
    invalidParameter = 20553,
};
}

/// A failure of a print run on its way to the one place that returns it as a result code.
class ReportError : public std::runtime_error
{
public:
    ReportError(int code, const QString &detail)
        : std::runtime_error(detail.toStdString()), m_code(code), m_detail(detail)
    {
    }
    int code() const { return m_code; }
    /// The template's line, the field or the position at fault; the message table's texts are fixed and name none.
    const QString &detail() const { return m_detail; }

private:
    int m_code;
    QString m_detail;
};
