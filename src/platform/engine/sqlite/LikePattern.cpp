#include "platform/engine/sqlite/LikePattern.h"

#include "platform/text/TextCompare.h"

#include <QList>

#include <algorithm>
#include <optional>

LikePattern::LikePattern(const QString &pattern)
{
    const QList<uint> characters = foldCase(pattern).toUcs4();
    for (qsizetype i = 0; i < characters.size(); ++i) {
        Part part;
        part.character = characters[i];
        switch (characters[i]) {
        case '*':
            part.kind = Part::AnyText;
            break;
        case '?':
            part.kind = Part::AnyCharacter;
            break;
        case '#':
            part.kind = Part::Digit;
            break;
        case '[': {
            const qsizetype close = characters.indexOf(']', i);
            m_matchesNothing = close < 0;
            if (m_matchesNothing)
                return;
            part.kind = Part::List;
            qsizetype at = i + 1;
            if (characters[at] == '!' && at + 1 < close) {
                part.negated = true;
                ++at;
            }
            i = close;
            if (at == close)
                continue; // an empty list stands for nothing
            while (at < close) {
                const bool range = at + 2 < close && characters[at + 1] == '-';
                part.ranges.push_back({characters[at], characters[range ? at + 2 : at]});
                at += range ? 3 : 1;
            }
            break;
        }
        }
        m_parts.push_back(std::move(part));
    }
}

bool LikePattern::Part::takes(char32_t c) const
{
    switch (kind) {
    case Character:
        return c == character;
    case Digit:
        return c >= '0' && c <= '9';
    case List:
        return negated
            != std::ranges::any_of(ranges, [c](const auto &range) { return c >= range.first && c <= range.second; });
    default:
        return true;
    }
}

/// Matches a text of `size` characters, of which `folded` gives each without its case.
template<typename Folded>
bool LikePattern::matches(qsizetype size, Folded folded) const
{
    size_t part = 0;
    qsizetype at = 0;
    // The last "*" and the text behind what it has taken: where to go on when the rest does not fit. Going back to the
    // last one is enough, so no pattern takes longer than its length times the text's.
    std::optional<size_t> star;
    qsizetype behindStar = 0;
    while (at < size) {
        if (part < m_parts.size() && m_parts[part].kind == Part::AnyText) {
            star = part++;
            behindStar = at;
        } else if (part < m_parts.size() && m_parts[part].takes(folded(at))) {
            ++part;
            ++at;
        } else if (star) {
            part = *star + 1;
            at = ++behindStar;
        } else {
            return false;
        }
    }
    return std::all_of(m_parts.begin() + part, m_parts.end(),
                       [](const Part &rest) { return rest.kind == Part::AnyText; });
}

bool LikePattern::matches(std::string_view text) const
{
    if (m_matchesNothing)
        return false;
    // Most texts of a shop are plain ASCII, and a search looks at all of them.
    if (isAscii(text))
        return matches(text.size(), [text](qsizetype at) -> char32_t {
            const char c = text[at];
            return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
        });
    const QList<uint> characters = foldCase(QString::fromUtf8(text.data(), text.size())).toUcs4();
    return matches(characters.size(), [&](qsizetype at) -> char32_t { return characters[at]; });
}
