#include "platform/engine/postgres/Libpq.h"

#include "platform/engine/EngineError.h"

#include <QLibrary>

namespace {

constexpr int interfaceVersion = 5;

}

QFunctionPointer Libpq::function(const char *name)
{
    static QLibrary library(QStringLiteral("pq"), interfaceVersion);
    if (const QFunctionPointer found = library.resolve(name))
        return found;
    throw EngineError(EngineError::noServerEngine, "The library for servers is missing: " + library.errorString());
}

const Libpq &libpq()
{
    static const Libpq loaded;
    return loaded;
}
