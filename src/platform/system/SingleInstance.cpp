#include "platform/system/SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

namespace {

// The runtime folder belongs to the user's session; where a system has none but the user's files, or none at all, the
// user's own name keeps two apart.
QString lockFile(const QString &name)
{
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty() && runtime != QDir::homePath())
        return QDir(runtime).filePath(name + ".lock");
    const QString user = QFileInfo(QDir::homePath()).fileName();
    return QDir(QDir::tempPath()).filePath(name + "-" + user + ".lock");
}

}

SingleInstance::SingleInstance(const QString &name) : m_lock(lockFile(name))
{
    // Only a living process counts as a running copy; the age of its lock says nothing.
    m_lock.setStaleLockTime(0);
    // A copy that was killed left its lock, and the system may have given its number to this very process. Who lives
    // holds the file itself, which then cannot be removed.
    m_acquired = m_lock.tryLock(0)
        || (m_lock.removeStaleLockFile() && m_lock.tryLock(0))
        // Where no lock can be made at all, nothing says that another copy runs.
        || m_lock.error() != QLockFile::LockFailedError;
}
