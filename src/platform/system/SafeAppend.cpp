#include "platform/system/SafeAppend.h"

#include <QFile>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool reachesDisk(QFile &file)
{
#ifdef Q_OS_WIN
    return file.flush() && _commit(file.handle()) == 0;
#else
    return file.flush() && fsync(file.handle()) == 0;
#endif
}

}

bool appendSafely(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::Append | QIODevice::ExistingOnly))
        return false;
    const qint64 before = file.size();
    if (file.write(bytes) == bytes.size() && reachesDisk(file))
        return true;
    file.resize(before);
    return false;
}
