#pragma once

#include <QString>

namespace ModMain {

/// What the report engine means by the result code of a print run: the code's digits and the text for it.
QString reportErrorText(qint16 resultCode);

/// Shows what the report engine means by the result code of a print run.
/// @returns the message: the code's digits and the text for it. Codes that the suite's table does not know are an
/// unknown error, 0 among them: callers ask for the others only. `detail` is shown below it.
QString ShowReportError(qint16 &resultCode, const QString &detail = {});

}
