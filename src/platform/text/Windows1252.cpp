#include "platform/text/Windows1252.h"

QString fromWindows1252(QByteArrayView bytes)
{
    // All but these are Latin 1.
    static constexpr char16_t from80[] =
        u"\u20ac\ufffd\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152"
        u"\ufffd\u017d\ufffd\ufffd\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122"
        u"\u0161\u203a\u0153\ufffd\u017e\u0178";
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c >= u'\x80' && c < u'\xa0')
            c = from80[c.unicode() - 0x80];
    }
    return text;
}
