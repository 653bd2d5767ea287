#pragma once

#include <QString>

#include <string_view>
#include <vector>

/// A pattern of LIKE: "*" any characters, "?" one, "#" one digit, "[a-f]" one of a list, "[!a-f]"
/// one that is not of it; "[*]" and the like stand for the sign itself, and "%" and "_" mean
/// nothing. Without regard to case.
class LikePattern
{
public:
    explicit LikePattern(const QString &pattern);
    /// `text` in UTF-8.
    bool matches(std::string_view text) const;

private:
    struct Part {
        enum Kind { Character, AnyCharacter, AnyText, Digit, List };
        Kind kind = Character;
        char32_t character = 0;
        bool negated = false;
        std::vector<std::pair<char32_t, char32_t>> ranges;

        bool takes(char32_t c) const;
    };

    template<typename Folded>
    bool matches(qsizetype size, Folded folded) const;

    std::vector<Part> m_parts;
    bool m_matchesNothing = false; ///< a list is not closed
};
