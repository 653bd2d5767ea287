#include "common/ItemKeys.h"

#include "platform/text/Numbers.h"

qint16 ItemKeys::toolIdOf(const QString &key, int prefixLength) { return toInteger(numberOf(key, prefixLength)); }
