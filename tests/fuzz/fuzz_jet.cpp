#include "platform/jet/JetFile.h"

#include <QCoreApplication>
#include <QTemporaryDir>

/// All tables of a file are read, or refused; nothing else may happen.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir folder("/dev/shm/jet-XXXXXX");
    static const QString name = folder.filePath("old.mdb");
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(reinterpret_cast<const char *>(data), qint64(size)) < 0)
        std::abort();
    file.close();
    for (const bool trustRows : {false, true}) {
        try {
            JetFile old(name, {.trustRows = trustRows});
            for (const JetTable &table : old.tables()) {
                old.read(table, [](const std::vector<JetValue> &row) {
                    for (const JetValue &value : row) {
                        if (const auto *number = std::get_if<double>(&value))
                            JetFile::dateText(*number);
                    }
                });
            }
        } catch (const JetError &) {
        }
    }
    return 0;
}
