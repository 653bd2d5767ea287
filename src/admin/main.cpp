#include "admin/Admin.h"
#include "platform/engine/EngineError.h"

#include <QCoreApplication>
#include <QFile>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QFile standardOutput, standardError;
    standardOutput.open(stdout, QIODevice::WriteOnly);
    standardError.open(stderr, QIODevice::WriteOnly);
    QTextStream out(&standardOutput), errors(&standardError);

    const int status = runAdmin(application.arguments().sliced(1), out, errors);

    // What a full disk cut off must not pass for the whole answer.
    out.flush();
    if (out.status() == QTextStream::Ok && standardOutput.flush())
        return status;
    errors << "error " << EngineError::diskError << ": The output could not be written.\n";
    return 1;
}
