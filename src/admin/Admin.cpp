#include "admin/Admin.h"

#include "admin/Command.h"
#include "admin/Refusal.h"
#include "platform/engine/EngineError.h"
#include "platform/reportengine/ResultCode.h"
#include "platform/system/ProgramFolder.h"

#include <algorithm>

namespace {

const QString program = "vorlane-admin";

const QList<Command> &commands()
{
    static const QList<Command> all{createCommand(),   sampleCommand(), sqlCommand(),       checkCommand(),
                                    backupCommand(),   copyCommand(),   upgradeCommand(),   reportCommand(),
                                    templateCommand(), importCommand(), importCsvCommand(), exportCommand()};
    return all;
}

QString overview()
{
    QString text = "usage: " + program + " COMMAND ...\n\n";
    for (const Command &command : commands())
        text += "  " + command.usage().leftJustified(51) + ' ' + command.summary + '\n';
    return text + "\n" + program + " COMMAND --help tells more, " + program + " --version which one this is.\n";
}

QString usageLine(const Command &command) { return "usage: " + program + ' ' + command.usage() + '\n'; }

QString help(const Command &command)
{
    QString text = usageLine(command) + '\n' + command.summary + ".\n";
    if (!command.details.isEmpty())
        text += command.details + '\n';
    for (const QCommandLineOption &option : command.options)
        text += "\n  --" + (option.names().constFirst() + ' ' + option.valueName()).leftJustified(24) + ' '
            + option.description() + '\n';
    return text;
}

int runCommand(const Command &command, const QStringList &arguments, QTextStream &out)
{
    QCommandLineParser parser;
    parser.addOption({{"h", "help"}, {}});
    parser.addOptions(command.options);
    const bool parsed = parser.parse(QStringList(program) + arguments);
    if (parsed && parser.isSet("help")) {
        out << help(command);
        return 0;
    }
    if (!parsed)
        throw UsageError(parser.errorText());
    for (const QString &option : command.required)
        if (!parser.isSet(option))
            throw UsageError("--" + option + " is missing.");
    if (parser.positionalArguments().size() != command.operands.size())
        throw UsageError(QString("%1 takes %2; given: %3.")
                             .arg(command.name, command.operands.join(", "))
                             .arg(parser.positionalArguments().size()));
    return command.run(parser, out);
}

}

QString Command::usage() const
{
    QStringList words{name};
    words += operands;
    for (const QCommandLineOption &option : options) {
        const QString name = option.names().constFirst();
        const QString written = QString("--" + name + ' ' + option.valueName()).trimmed();
        words << (required.contains(name) ? written : '[' + written + ']');
    }
    return words.join(' ');
}

bool needsFonts(const QString &command)
{
    const auto found = std::ranges::find(commands(), command, &Command::name);
    return found != commands().end() && found->needsFonts;
}

int runAdmin(const QStringList &arguments, QTextStream &out, QTextStream &errors)
{
    const QString name = arguments.value(0);
    if (name == "--help" || name == "-h") {
        out << overview();
        return 0;
    }
    if (name == "--version") {
        out << program << ' ' << ProgramFolder::version() << '\n';
        return 0;
    }
    const auto command = std::ranges::find(commands(), name, &Command::name);
    if (command == commands().end()) {
        errors << (name.isEmpty() ? QString("A command is missing.") : "There is no command '" + name + "'.") << '\n'
               << overview();
        return 2;
    }
    try {
        return runCommand(*command, arguments.sliced(1), out);
    } catch (const UsageError &error) {
        errors << error.what() << '\n' << usageLine(*command);
        return 2;
    } catch (const Refusal &refusal) {
        errors << refusal.sentence() << '\n';
        return refusal.status();
    } catch (const EngineError &error) {
        errors << "error " << error.number() << ": " << error.text() << '\n';
        return 1;
    } catch (const ReportError &error) {
        errors << "error " << error.code() << ": " << error.detail() << '\n';
        return 1;
    }
}
