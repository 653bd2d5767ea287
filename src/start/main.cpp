#include "platform/gui/HelpKey.h"
#include "platform/gui/HourGlass.h"
#include "platform/gui/Icons.h"
#include "platform/gui/MsgBox.h"
#include "platform/gui/ScreenFit.h"
#include "platform/system/ProgramFolder.h"
#include "platform/system/UserSettings.h"
#include "start/CribChooser.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>
#include <QStandardPaths>

namespace {

constexpr auto settingName = "crib/folder";

QString besideThis(const QString &program)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString found = QStandardPaths::findExecutable(program, {folder});
    return found.isEmpty() ? folder + '/' + program : found;
}

/// The folder to work in, without asking: the environment's, the one chosen last, the one for all users.
CribFolder::Found known()
{
    CribFolder::Found found;
    if (qEnvironmentVariableIsSet(ProgramFolder::cribVariable))
        found.folder = ProgramFolder::path();
    else if (const QByteArray chosen = UserSettings::value(settingName); !chosen.isEmpty())
        found.folder = QString::fromUtf8(chosen);
    else
        found = CribFolder::namedIn(CribFolder::configuration());
    if (!found.folder.isEmpty()) {
        const HourGlass busy;
        found.fault = CribFolder::fault(found.folder);
    }
    return found;
}

/// Empty when the user gives up.
QString asked(const CribFolder::Found &last)
{
    CribChooser chooser(last, besideThis("vorlane-admin"));
    if (chooser.exec() != QDialog::Accepted)
        return {};
    UserSettings::setValue(settingName, chooser.folder().toUtf8());
    return chooser.folder();
}

}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    QApplication::setApplicationName("vorlane-start");
    QApplication::setApplicationDisplayName("Vorlane Manager");
    QApplication::setApplicationVersion(ProgramFolder::version());
    QApplication::setDesktopFileName("vorlane");
    QApplication::setWindowIcon(Icons::icon("vorlane"));
    UserSettings::setFile(UserSettings::usualFile());

    QCommandLineParser parser;
    parser.setApplicationDescription("Finds the crib folder, asks for it once, and starts Vorlane Manager in it.");
    const QCommandLineOption choose("choose", "Asks for another crib folder.");
    const QCommandLineOption desk("desk", "Starts Vorlane Desk, the counter, instead.");
    parser.addOptions({choose, desk});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);

    const HelpKey helpKey(std::vector<HelpPage>{{"CribChooser", "installing.html"}});
    const ScreenFit screenFit;
    const CribFolder::Found found = parser.isSet(choose) ? CribFolder::Found() : known();
    const bool isUsable = !found.folder.isEmpty() && found.fault.isEmpty() && CribChooser::mayBeReadOnly(found.folder);
    const QString folder = isUsable ? found.folder : asked(found);
    if (folder.isEmpty())
        return EXIT_FAILURE;
    QProcess program;
    program.setProgram(besideThis(parser.isSet(desk) ? "vorlane-desk" : "vorlane"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(ProgramFolder::cribVariable, folder);
    program.setProcessEnvironment(environment);
    if (program.startDetached())
        return EXIT_SUCCESS;
    msgBox({.text = "'" + program.program() + "' cannot be started.", .icon = QMessageBox::Critical});
    return EXIT_FAILURE;
}
