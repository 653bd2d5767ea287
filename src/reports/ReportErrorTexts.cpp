#include "reports/ReportErrorTexts.h"

#include "platform/gui/MsgBox.h"

#include <algorithm>
#include <iterator>

namespace {

struct ResultText {
    qint16 code;
    const char *text;
};

constexpr ResultText resultTexts[] = {
    {20500,
     ":  Not Enough Memory For Operation or Not Enough Memory To Get Selection Formula or Cannot Get Selection "
     "Formula.  The report holds more records or pages, or its formula more conditions, than can be handled."},
    {20501, ":  Invalid Job Number.  Internal error."},
    {20502,
     ":  Invalid Text Handle or Parent Window Cannot Be An MDI Form or Invalid Parent Window Handle.  The "
     "window that the report was to be shown in cannot hold it."},
    {20503, ":  Buffer Too Small For String.  Internal error."},
    {20504, ":  Report Not Found.  You have specified a report that does not exist."},
    {20505,
     ":  No Print Destination Specified or Invalid Print Destination.  The Destination property must be 0, 1, "
     "or 2. You have specified a print destination other than one of these values."},
    {20506, ":  Invalid File Number.  There is no table of that number in the report."},
    {20507, ":  Invalid File Name.  There is an error in the file name you specified."},
    {20508, ":  Invalid Field Number.  Internal error."},
    {20509,
     ":  Invalid Field Name.  The report or its selection formula names a field that the report's tables do not "
     "have."},
    {20510, ":  Invalid Formula Name.  The formula name you specified is invalid or nonexistent."},
    {20511, ":  Invalid Sort Direction.  Records and groups can be sorted in ascending or descending order only."},
    {20512, ":  Print Engine Not Open.  Internal error."},
    {20513, ":  Invalid Printer  The printer driver for the printer you specified is missing."},
    {20514, ":  Print File Exists.  There is already a file of the name you specified, and it is not to be replaced."},
    {20515,
     ":  Error In Formula.  There is a formula error in the replacement formula text. Review the formula syntax "
     "and retry."},
    {20517, ":  Print Engine Already In Use.  Internal error."},
    {20520, ":  Print Job Already Started.  Wait for the report that is being printed and retry."},
    {20521, ":  Invalid Summary Field.  The report sums up a field that holds no numbers."},
    {20522, ":  Not Enough System Resources.  Close other windows or programs and retry."},
    {20524, ":  Print Job Busy.  The report is still being read or printed. Wait for it or cancel it, and retry."},
    {20525, ":  Unable To Load Report.  There is something wrong with the report you are trying to open."},
    {20526, ":  No Default Printer.  Install a printer, or make one the default printer, and retry."},
    {20527, ":  SQL Server Error.  There is a problem connecting with the SQL server."},
    {20529, ":  Disk Full.  There is not enough room on the disk for the file that was to be written."},
    {20530, ":  File I/O Error.  A file cannot be read or written. Check that it exists and that you may use it."},
    {20531, ":  Incorrect Password.  You have specified an incorrect password."},
    {20532, ":  Missing Database DLL.  The database DLL is corrupt."},
    {20533, ":  Unable To Open Database File.  The database file is missing, damaged or in use by another program."},
    {20534, ":  Error Detected By Database DLL.  The database DLL is corrupt."},
    {20535,
     ":  Unable To Connect:Incorrect Session Parameters.  The database cannot be reached with the session "
     "parameters you specified."},
    {20536,
     ":  Unable To Connect:Incorrect Log On Parameters.  The database cannot be reached with the user name or "
     "the password you specified."},
    {20537, ":  Unable To Connect:Incorrect Table Location.  The table you have specified cannot be found."},
    {20538, ":  Parameter Has Invalid Structure Size.  Internal error."},
    {20539,
     ":  Invalid Print Date  You have specified an Invalid date using the PrintYear, PrintMonth, and PrintDay "
     "properties."},
    {20540, ":  Missing or Out-of-date Export DLL"},
    {20541, ":  Error in Export DLL  An export DLL has reported an error."},
    {20542, ":  Already at the First Page"},
    {20543, ":  Already at the Last Page"},
    {20544, ":  Report Open by Another User"},
    {20545, ":  User Has Cancelled Operation"},
    {20546, ":  OLE 2.0 Not Available"},
    {20547, ":  Invalid Crosstab Group"},
    {20548, ":  Crosstab is Missing a Summarized Field"},
    {20550, ":  Invalid Page Number"},
    {20552, ":  No Stored Procedure in the Report"},
    {20553, ":  Invalid Parameter"},
    {20554, ":  Graph Does Not Exist"},
    {20555, ":  Graph Type is Invalid"},
    {20557, ":  Graph col Value Cannot be Changed"},
};

}

QString ModMain::reportErrorText(qint16 resultCode)
{
    const auto found = std::find_if(std::begin(resultTexts), std::end(resultTexts),
                                    [&](const ResultText &row) { return row.code == resultCode; });
    return QString::number(resultCode) + (found == std::end(resultTexts) ? ":  Unknown Error!" : found->text);
}

QString ModMain::ShowReportError(qint16 &resultCode, const QString &detail)
{
    const QString message = reportErrorText(resultCode);
    msgBox({.text = message, .caption = "Crystal Reports Error", .icon = QMessageBox::Critical, .detail = detail});
    return message;
}
