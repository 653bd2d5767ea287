#pragma once

#include <QString>

/// A text in the code page of Western Europe, which Qt decodes on some systems only. The five bytes that it leaves
/// undefined become U+FFFD.
QString fromWindows1252(QByteArrayView bytes);
