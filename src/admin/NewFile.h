#pragma once

#include <QString>

/// A database file in the making. It grows beside its place under a name of its own and takes its
/// place only when it is whole, so that a failure leaves nothing behind.
class NewFile
{
public:
    /// @throws EngineError when `file` exists already.
    explicit NewFile(const QString &file);
    ~NewFile();
    Q_DISABLE_COPY_MOVE(NewFile)

    /// Where to write. The file is not made yet.
    const QString &temporaryPath() const { return m_temporary; }

    /// Puts the file, closed by now, in its place. @throws EngineError when it cannot stand there.
    void commit();

private:
    QString m_file;
    QString m_temporary;
};
