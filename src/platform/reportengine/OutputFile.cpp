#include "platform/reportengine/OutputFile.h"

#include "platform/reportengine/ResultCode.h"
#include "platform/system/ProgramFolder.h"

#include <QFileInfo>

OutputFile::OutputFile(const QString &path, bool mayReplace) : m_file(path)
{
    const QFileInfo existing(path);
    if (ProgramFolder::isDevice(path) || (existing.exists() && !existing.isFile()))
        throw ReportError(ResultCode::fileError, QStringLiteral("%1 is no file").arg(path));
    if (existing.exists() && !mayReplace)
        throw ReportError(ResultCode::fileExists, QStringLiteral("%1 exists").arg(path));
    if (!m_file.open(QIODevice::WriteOnly))
        throw ReportError(ResultCode::fileError, QStringLiteral("%1: %2").arg(path, m_file.errorString()));
}

void OutputFile::commit()
{
    if (!m_file.commit())
        check(m_file);
}

void OutputFile::check(QFileDevice &file)
{
    if (file.error() == QFileDevice::NoError)
        return;
    // A write of which only a part got onto the disk does not tell why; the next write does.
    if (file.error() == QFileDevice::WriteError)
        file.flush();
    // The one resource that a write may lack is room on the disk.
    const int code = file.error() == QFileDevice::ResourceError ? ResultCode::diskFull : ResultCode::fileError;
    throw ReportError(code, QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
}
