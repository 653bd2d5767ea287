#include "platform/text/TextCompare.h"

#include <algorithm>
#include <array>

namespace {

constexpr char32_t endOfText = 0;
constexpr char32_t digitsFrom = 0x200000;
constexpr char32_t lettersFrom = 0x400000;

constexpr std::array<char32_t, 0x80> asciiWeights = [] {
    std::array<char32_t, 0x80> weights{};
    for (char32_t c = 0; c < weights.size(); ++c) {
        const char32_t small = c >= 'A' && c <= 'Z' ? c + 32 : c;
        // One more than the character, so that no character weighs as little as the end of the text.
        weights[c] = small + 1 + (small >= 'a' && small <= 'z' ? lettersFrom : c >= '0' && c <= '9' ? digitsFrom : 0);
    }
    return weights;
}();

char32_t weight(char32_t folded)
{
    if (folded < asciiWeights.size())
        return asciiWeights[folded];
    return folded + 1 + (QChar::isLetter(folded) ? lettersFrom : QChar::isDigit(folded) ? digitsFrom : 0);
}

/// Gives a text's characters, those beyond 16 bits whole.
class Characters
{
public:
    explicit Characters(QStringView text) : m_text(text) { }
    bool hasNext() const { return m_at < m_text.size(); }
    char32_t next()
    {
        const QChar c = m_text[m_at++];
        if (!c.isHighSurrogate() || !hasNext() || !m_text[m_at].isLowSurrogate())
            return c.unicode();
        return QChar::surrogateToUcs4(c, m_text[m_at++]);
    }

private:
    QStringView m_text;
    qsizetype m_at = 0;
};

char32_t withoutAccent(char32_t character)
{
    while (character >= 0x80 && QChar::decompositionTag(character) == QChar::Canonical) {
        const QString parts = QChar::decomposition(character);
        Characters part(parts);
        const char32_t base = part.next();
        // A Korean syllable comes apart into letters, not into a letter and its marks.
        if (part.hasNext() && QChar::category(part.next()) != QChar::Mark_NonSpacing)
            break;
        character = QChar::toCaseFolded(base);
    }
    return character;
}

char32_t nextBaseWeight(Characters &text)
{
    while (text.hasNext())
        if (const char32_t found = baseWeight(text.next()))
            return found;
    return endOfText;
}

char32_t nextFolded(Characters &text) { return text.hasNext() ? QChar::toCaseFolded(text.next()) + 1 : endOfText; }

template<typename Next>
int compareBy(Next next, QStringView a, QStringView b)
{
    Characters left(a), right(b);
    for (;;) {
        const char32_t l = next(left), r = next(right);
        if (l != r)
            return l < r ? -1 : 1;
        if (l == endOfText)
            return 0;
    }
}

int compareAnyText(QStringView a, QStringView b)
{
    if (const int byBase = compareBy(nextBaseWeight, a, b))
        return byBase;
    return compareBy(nextFolded, a, b);
}

// Most texts of a shop are plain ASCII; the rest is looked at closely from the first character on that is not.
template<typename Text, typename Rest>
int compareFast(Text a, Text b, Rest rest)
{
    const auto common = std::min(a.size(), b.size());
    for (decltype(a.size()) i = 0; i < common; ++i) {
        const char32_t l = std::make_unsigned_t<typename Text::value_type>(a[i]);
        const char32_t r = std::make_unsigned_t<typename Text::value_type>(b[i]);
        if ((l | r) >= asciiWeights.size())
            return rest(a.substr(i), b.substr(i));
        if (asciiWeights[l] != asciiWeights[r])
            return asciiWeights[l] < asciiWeights[r] ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

/// Each character of `text` by one of QChar's simple mappings, which never change a text's length in characters.
template<QChar (QChar::*near)() const, char32_t (*any)(char32_t)>
QString mapped(QString text)
{
    if (!std::ranges::any_of(text, [](QChar c) { return c.isSurrogate(); })) {
        for (QChar &c : text)
            c = (c.*near)();
        return text;
    }
    QString result;
    for (Characters character(text); character.hasNext();)
        result += QChar::fromUcs4(any(character.next()));
    return result;
}

}

char32_t baseWeight(char32_t character)
{
    const char32_t base = withoutAccent(QChar::toCaseFolded(character));
    return QChar::category(base) == QChar::Mark_NonSpacing ? 0 : weight(base);
}

int compareText(QStringView a, QStringView b)
{
    const std::u16string_view left(a.utf16(), a.size()), right(b.utf16(), b.size());
    return compareFast(left, right, [](auto l, auto r) { return compareAnyText(l, r); });
}

int compareText(std::string_view a, std::string_view b)
{
    return compareFast(a, b, [](auto l, auto r) {
        return compareAnyText(QString::fromUtf8(l.data(), l.size()), QString::fromUtf8(r.data(), r.size()));
    });
}

QString foldCase(QString text) { return mapped<&QChar::toCaseFolded, &QChar::toCaseFolded>(text); }

QString upperCase(QString text) { return mapped<&QChar::toUpper, &QChar::toUpper>(text); }

bool isAscii(std::string_view text)
{
    return std::ranges::none_of(text, [](char c) { return (c & 0x80) != 0; });
}
