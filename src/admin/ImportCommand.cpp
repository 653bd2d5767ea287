#include "admin/Command.h"
#include "admin/Import.h"
#include "admin/NewFile.h"
#include "admin/ProgressLine.h"
#include "admin/Refusal.h"
#include "platform/engine/EngineError.h"
#include "platform/system/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

QString inQuotes(const QString &file) { return '\'' + file + "' "; }

const QString changed = "changed while it was read; close the old program and try again";

/// As it is in the folder's list: what changes when somebody writes to it.
struct FileState {
    explicit FileState(const QString &file) : size(QFileInfo(file).size()), written(QFileInfo(file).lastModified()) { }
    bool operator==(const FileState &) const = default;

    qint64 size;
    QDateTime written;
};

/// The suite keeps such a file beside an open database, in any case of letters.
void requireNotInUse(const QString &file)
{
    const QFileInfo info(file);
    const QString lock = info.completeBaseName() + ".ldb";
    for (const QString &name : info.dir().entryList(QDir::Files | QDir::Hidden)) {
        if (name.compare(lock, Qt::CaseInsensitive) == 0)
            throw Refusal(ImportStatus::NotReadable,
                          QString("is in use, for '%1' lies beside it; close the old program, or delete that file when "
                                  "nobody has it open")
                              .arg(name));
    }
}

QString passwordIn(const QString &file)
{
    QFile stored(ProgramFolder::toNative(file));
    if (!QFileInfo(stored).isFile() || !stored.open(QIODevice::ReadOnly))
        throw UsageError("The password file '" + file + "' cannot be read.");
    return QString::fromUtf8(stored.readLine()).remove('\r').remove('\n');
}

/// Where the report goes besides; it takes its place when all is done.
std::unique_ptr<QSaveFile> reportFile(const QString &name, const QString &newFile)
{
    if (name.isEmpty())
        return nullptr;
    auto file = std::make_unique<QSaveFile>(ProgramFolder::toNative(name));
    if (QFileInfo(file->fileName()).absoluteFilePath() == QFileInfo(newFile).absoluteFilePath())
        throw UsageError("The report cannot go into the new database.");
    if (ProgramFolder::isDevice(name))
        throw Refusal(ImportStatus::CannotWrite, inQuotes(name) + "is a device's name, not a file's.");
    if (QFileInfo::exists(file->fileName()))
        throw Refusal(ImportStatus::CannotWrite, inQuotes(name) + "exists already.");
    if (!file->open(QIODevice::WriteOnly))
        throw Refusal(ImportStatus::CannotWrite, inQuotes(name) + "cannot be written: " + file->errorString() + '.');
    return file;
}

int runImport(const QCommandLineParser &arguments, QTextStream &out)
{
    const QString oldName = arguments.positionalArguments().at(0), newName = arguments.positionalArguments().at(1);
    const QString oldFile = ProgramFolder::toNative(oldName), newFile = ProgramFolder::toNative(newName);
    Import::Options options{.reading = {.trustRows = arguments.isSet("trust-rows")}, .mend = arguments.isSet("mend")};
    if (arguments.isSet("password-file"))
        options.reading.password = passwordIn(arguments.value("password-file"));
    const FileState before(oldFile);
    const auto saved = reportFile(arguments.value("report"), newFile);
    const auto refusal = [&](int status, const QString &sentence) {
        // What was read of a file while it changed tells nothing of the file.
        if (FileState(oldFile) != before)
            return Refusal(ImportStatus::NotReadable, inQuotes(oldName) + changed + '.');
        // A text of the file that the sentence quotes may have lines.
        return Refusal(status, inQuotes(oldName) + sentence.simplified() + '.');
    };
    try {
        NewFile file(newName);
        requireNotInUse(oldFile);
        QString report;
        bool isNoted = false;
        {
            ProgressLine line;
            Import import(oldFile, file.temporaryPath(), options, [&line](const QString &step, int percent) {
                line.show(QString("%1: %2 %").arg(step).arg(percent));
            });
            import.copy();
            import.compare();
            report = inQuotes(oldName) + "and '" + newName + "' hold the same.\n\n" + import.report();
            isNoted = !import.notes().isEmpty();
        }
        requireNotInUse(oldFile);
        if (FileState(oldFile) != before)
            throw Refusal(ImportStatus::NotReadable, changed);
        if (saved && (saved->write(report.toUtf8()) < 0 || !saved->flush()))
            throw Refusal(ImportStatus::CannotWrite,
                          "was not imported, for its report could not be written: " + saved->errorString());
        file.commit();
        if (saved && !saved->commit())
            throw Refusal(ImportStatus::CannotWrite,
                          "was imported, but the report could not be written: " + saved->errorString());
        out << report;
        return isNoted ? ImportStatus::WithNotes : ImportStatus::Imported;
    } catch (const JetError &error) {
        const int status = error.cause() == JetError::Damaged ? ImportStatus::Damaged : ImportStatus::NotReadable;
        throw refusal(status, error.text());
    } catch (const Refusal &error) {
        throw refusal(error.status(), error.sentence());
    } catch (const EngineError &error) {
        throw Refusal(ImportStatus::CannotWrite, inQuotes(newName) + "cannot be written: " + error.text());
    }
}

}

Command importCommand()
{
    const QCommandLineOption password("password-file", "Its first line is the old file's database password", "FILE");
    const QCommandLineOption mend("mend", "Adds a folder for tools whose type or location does not exist");
    const QCommandLineOption trust("trust-rows", "Takes a file whose tables count their rows wrong");
    const QCommandLineOption report("report", "Where the report goes besides", "FILE");
    const QString details = "OLD is a Jet 3 or Jet 4 file of the suite, which is not changed. NEW is a database of "
                            "this program, which must\n"
                            "not exist yet. Both are compared, and a report tells what is in them. The exit status is "
                            "0, or 1 when the report\n"
                            "has notes; 2 for wrong usage, 3 when OLD cannot be read, 4 when it is damaged, 5 when "
                            "something in it does not\n"
                            "fit, 6 when NEW cannot be written, 7 when they differ. From 2 on there is no NEW.";
    return {.name = "import",
            .operands = {"OLD", "NEW"},
            .options = {password, mend, trust, report},
            .summary = "Moves in from an old Jet file of the suite",
            .details = details,
            .run = runImport};
}
