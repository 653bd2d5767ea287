#include "platform/text/Csv.h"

#include <algorithm>

QString csvField(QString text)
{
    const auto needsQuotes = [](QChar c) { return c == ',' || c == '"' || c == '\n' || c == '\r'; };
    return std::any_of(text.begin(), text.end(), needsQuotes) ? '"' + text.replace('"', QStringLiteral("\"\"")) + '"'
                                                              : text;
}
