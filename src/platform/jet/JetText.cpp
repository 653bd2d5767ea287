#include "platform/jet/JetText.h"

#include "platform/text/Windows1252.h"

#include <algorithm>

JetText::JetText(const JetPages &pages) : m_isUnicode(pages.version() == JetPages::Version::Jet4)
{
    m_isWestern = pages.codePage() == 1252;
    if (m_isUnicode || m_isWestern)
        return;
    const QByteArray number = QByteArray::number(pages.codePage());
    for (const char *family : {"windows-", "cp", "ibm-"}) {
        m_codePage = QStringDecoder((family + number).constData());
        if (m_codePage.isValid())
            return;
    }
    throw JetError(JetError::CannotRead,
                   QString("has its texts in code page %1, which this computer does not know").arg(pages.codePage()));
}

QString JetText::decoded(const Bytes &bytes)
{
    if (m_isUnicode)
        return unicode(bytes);
    // In all code pages of that system the lower half is ASCII.
    if (std::ranges::all_of(bytes.view(), [](char c) { return c >= 0; }))
        return QString::fromLatin1(bytes.view());
    QString text;
    if (m_isWestern) {
        text = fromWindows1252(bytes.view());
    } else {
        m_codePage.resetState();
        text = m_codePage(bytes.view());
    }
    m_unknown += text.count(QChar::ReplacementCharacter);
    return text;
}

QString JetText::unicode(const Bytes &bytes)
{
    const bool isMarked = bytes.size() >= 2 && bytes.word(0) == 0xfeff;
    if (isMarked && !bytes.view().contains('\0'))
        return QString::fromLatin1(bytes.from(2).view());
    QString text;
    text.reserve(bytes.size());
    bool isCompressed = isMarked;
    for (qsizetype at = isMarked ? 2 : 0; at < bytes.size();) {
        if (isMarked && bytes.byte(at) == 0) {
            // Behind a zero the other form goes on.
            isCompressed = !isCompressed;
            ++at;
        } else if (isCompressed) {
            text += QChar(bytes.byte(at++));
        } else {
            text += QChar(bytes.word(at));
            at += 2;
        }
    }
    // Half a character of two halves cannot be stored.
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
        } else if (text[i].isSurrogate()) {
            text[i] = QChar::ReplacementCharacter;
            ++m_unknown;
        }
    }
    return text;
}
