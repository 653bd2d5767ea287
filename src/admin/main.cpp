#include "admin/Admin.h"
#include "admin/StandardStreams.h"
#include "platform/engine/EngineError.h"
#include "platform/reportengine/UsualPaper.h"

#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QOperatingSystemVersion>

#include <memory>

namespace {

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[])
{
    if (argc < 2 || !needsFonts(argv[1]))
        return std::make_unique<QCoreApplication>(argc, argv);
    // Fonts are all that is wanted of it: there need be no display. Windows always has one, and its fonts with it.
    if (QOperatingSystemVersion::currentType() != QOperatingSystemVersion::Windows)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

}

int main(int argc, char *argv[])
{
    // On standard error stands what a command says, and only that.
    QLoggingCategory::setFilterRules("*.warning=false");
    const auto application = makeApplication(argc, argv);
    UsualPaper::ask(UsualPaper::ofLocale);
    const StandardStreams streams;
    QFile standardOutput, standardError;
    standardOutput.open(stdout, QIODevice::WriteOnly);
    standardError.open(stderr, QIODevice::WriteOnly);
    QTextStream out(&standardOutput), errors(&standardError);

    const int status = runAdmin(application->arguments().sliced(1), out, errors);

    // What a full disk cut off must not pass for the whole answer.
    out.flush();
    if (out.status() == QTextStream::Ok && standardOutput.flush())
        return status;
    errors << "error " << EngineError::diskError << ": The output could not be written.\n";
    return 1;
}
