#include "start/CribMaker.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/postgres/ConnectionFile.h"
#include "platform/jet/JetFile.h"
#include "start/CribFolder.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <filesystem>

namespace {

constexpr auto mendOption = "--mend";

/// A copy, or the reason why there is none.
QString copyFile(const QString &from, const QString &to)
{
    QFile source(from);
    QDir().mkpath(QFileInfo(to).path());
    return source.copy(to) ? QString() : QString("'%1' cannot be copied: %2.").arg(from, source.errorString());
}

}

QString CribMaker::makeEmpty(const QString &folder) const
{
    return make(folder, [this](const QString &database) { return runAdmin({"create", database}, database); });
}

QString CribMaker::makeSample(const QString &folder) const
{
    return make(folder, [this](const QString &database) { return runAdmin({"sample", database}, database); });
}

QString CribMaker::moveIn(const QString &folder, const OldFile &old) const
{
    constexpr int withNotes = 1;
    return make(folder, [&](const QString &database) {
        QStringList arguments{"import", old.name, database, "--report", folder + '/' + reportName};
        if (old.mend)
            arguments << mendOption;
        // Command lines are seen by all users of a computer, this file by nobody else.
        QTemporaryFile password;
        if (!old.password.isEmpty()) {
            if (!password.open() || password.write(old.password.toUtf8()) < 0 || !password.flush())
                return QString("The password cannot be handed on: %1.").arg(password.errorString());
            arguments << "--password-file" << password.fileName();
        }
        const QString fault = runAdmin(arguments, database, withNotes);
        if (!fault.isEmpty()) // one that was stopped leaves the beginning of its report
            for (const QFileInfo &file : QDir(folder).entryInfoList({QString(reportName) + ".??????"}, QDir::Files))
                QFile::remove(file.filePath());
        return fault;
    });
}

bool CribMaker::hasPassword(const QString &oldFile)
{
    try {
        const JetFile file(oldFile, {});
    } catch (const JetError &error) {
        return error.cause() == JetError::WrongPassword;
    }
    return false;
}

// The refusal names the option.
bool CribMaker::isMendable(const QString &fault) { return fault.contains(mendOption); }

QString CribMaker::connectTo(const QString &folder, const QString &connectionFile) const
{
    return make(folder, [&](const QString &database) -> QString {
        const QDir home = QFileInfo(connectionFile).absoluteDir();
        QStringList names{QFileInfo(connectionFile).fileName()};
        try {
            const auto settings = ConnectionFile::read(connectionFile);
            if (!settings)
                return QString("'%1' is no connection file: its first line is not [postgresql].").arg(connectionFile);
            for (const auto &[keyword, value] : settings->parameters) {
                const QString name = home.relativeFilePath(QFile::decodeName(value));
                if (QDir::isAbsolutePath(QFile::decodeName(value)) && !name.startsWith("..") && home.exists(name))
                    names.append(name);
            }
        } catch (const EngineError &error) {
            return error.text();
        }
        QString fault;
        QStringList copies;
        for (const QString &name : names) {
            const QString copy = copies.isEmpty() ? database : folder + '/' + name;
            fault = copyFile(home.filePath(name), copy);
            if (!fault.isEmpty())
                break;
            copies.append(copy);
        }
        if (fault.isEmpty())
            fault = CribFolder::fault(folder);
        if (!fault.isEmpty())
            for (const QString &copy : copies)
                QFile::remove(copy);
        return fault;
    });
}

QString CribMaker::make(const QString &folder, const std::function<QString(const QString &)> &fill) const
{
    const QString database = CribFolder::database(folder);
    if (QFileInfo::exists(database))
        return QString("There is a crib in the folder '%1' already. Open it, or name another folder.").arg(folder);
    if (QDir::separator() == '/' && folder.contains('\\'))
        return "The name of the folder must have no \\ in it.";
    QStringList newFolders; // the innermost first
    for (QString path = folder; !QFileInfo::exists(path); path = QFileInfo(path).path())
        newFolders.append(path);
    std::error_code cause;
    std::filesystem::create_directories(folder.toStdU16String(), cause);
    const QString fault = cause
        ? QString("The folder '%1' cannot be made: %2.").arg(folder, QString::fromLocal8Bit(cause.message()))
        : fill(database);
    if (!fault.isEmpty())
        for (const QString &path : newFolders)
            QDir().rmdir(path);
    return fault;
}

QString CribMaker::runAdmin(const QStringList &arguments, const QString &database, int lastGoodStatus) const
{
    QProgressDialog busy("Making the crib...", "Cancel", 0, 0, m_owner);
    busy.setWindowModality(Qt::WindowModal);
    bool isStopped = false;
    QProcess admin;
    QEventLoop untilDone;
    QObject::connect(&admin, &QProcess::finished, &untilDone, &QEventLoop::quit);
    QObject::connect(&busy, &QProgressDialog::canceled, &admin, [&] {
        isStopped = true;
        admin.kill();
    });
    admin.start(m_admin, arguments);
    if (!admin.waitForStarted())
        return QString("'%1' cannot be started: %2.").arg(m_admin, admin.errorString());
    const QString unfinished = QString("%1.%2.part").arg(database).arg(admin.processId());
    busy.show();
    if (admin.state() != QProcess::NotRunning)
        untilDone.exec();
    if (admin.exitStatus() == QProcess::NormalExit && admin.exitCode() <= lastGoodStatus)
        return {};
    // One that was killed did not clean up.
    QFile::remove(unfinished);
    QFile::remove(unfinished + "-journal");
    if (isStopped)
        return "No crib was made.";
    const QString said = QString::fromUtf8(admin.readAllStandardError()).trimmed();
    // The engine's words name no file, as a window that is open on one has no need of it.
    static const QRegularExpression ofEngine("^error \\d+: (.*)", QRegularExpression::DotMatchesEverythingOption);
    if (const QRegularExpressionMatch words = ofEngine.match(said); words.hasMatch())
        return QString("No crib was made in '%1'. %2").arg(QFileInfo(database).path(), words.captured(1));
    return said.isEmpty() ? QString("'%1' failed.").arg(m_admin) : said;
}
