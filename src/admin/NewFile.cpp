#include "admin/NewFile.h"

#include "platform/engine/EngineError.h"
#include "platform/system/ProgramFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

NewFile::NewFile(const QString &file)
    : m_file(ProgramFolder::toNative(file)),
      m_temporary(QString("%1.%2.part").arg(m_file).arg(QCoreApplication::applicationPid()))
{
    if (ProgramFolder::isDevice(m_file))
        throw EngineError(EngineError::cannotOpenFile, QString("'%1' is a device's name, not a file's.").arg(file));
    if (QFileInfo::exists(m_file))
        throw EngineError(EngineError::fileExists, QString("'%1' already exists.").arg(file));
    if (const QFileInfo folder(QFileInfo(m_file).path()); !folder.isDir() || !folder.isWritable())
        throw EngineError(EngineError::cannotOpenFile,
                          QString("No file can be made in the folder '%1'.").arg(folder.filePath()));
}

NewFile::~NewFile()
{
    QFile::remove(m_temporary);
    QFile::remove(m_temporary + "-journal");
}

void NewFile::commit()
{
    QFile temporary(m_temporary);
    if (!temporary.rename(m_file))
        throw EngineError(EngineError::cannotOpenFile,
                          QString("'%1' cannot be written. %2").arg(m_file, temporary.errorString()));
}
