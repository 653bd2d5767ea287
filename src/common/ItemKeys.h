#pragma once

#include <QString>

/// How the items of the tool list show what they are; commands recognise a selection by its key's prefix and by this.
namespace ItemIcon {
enum Number { toolOut = 1, folder = 3, openFolder = 4, toolInStock = 6, toolScrapped = 7 };
}

/// Keys of tree nodes and list items: a prefix that says what it is, then its number.
namespace ItemKeys {

inline const QString root = QStringLiteral("x0");

inline QString toolInStock(int toolId) { return QStringLiteral("r%1").arg(toolId); }
inline QString toolOut(int toolId) { return QStringLiteral("co%1").arg(toolId); }

/// What follows the prefix of a key.
inline QString numberOf(const QString &key, int prefixLength = 1) { return key.mid(prefixLength); }

/// Number of the tool behind a list key such as "r12" or, with a prefix of two, "co12".
/// @throws NumberError above 32767: loans carry tool numbers in 16 bits.
qint16 toolIdOf(const QString &key, int prefixLength = 1);

}
