#include "platform/engine/dialect/Lexer.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/DateLiteral.h"

namespace {

// Longer texts would only bury the message.
constexpr qsizetype quotedLength = 80;
// Integers beyond 18 digits no longer fit a 64-bit number for sure.
constexpr qsizetype maximumIntegerLength = 18;

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

bool beginsWord(QChar c)
{
    const char16_t code = c.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || code == '_'
        || (code >= 0x80 && !c.isSpace());
}

bool continuesWord(QChar c) { return beginsWord(c) || isDigit(c); }

[[noreturn]] void refuse(const char *what, QStringView rest)
{
    throw EngineError(EngineError::syntaxError,
                      QStringLiteral("Syntax error%1 in query expression '%2'.")
                          .arg(QLatin1String(what), rest.first(std::min(rest.size(), quotedLength))));
}

}

QString dialect::Token::value() const
{
    switch (kind) {
    case BracketedName:
        return source.sliced(1, source.size() - 2).toString();
    case Text: {
        const QChar quote = source.front();
        QString text = source.sliced(1, source.size() - 2).toString();
        return text.contains(quote) ? text.replace(QString(2, quote), QString(quote)) : text;
    }
    case Date:
    case Day: {
        QString date = storedDate(source.sliced(1, source.size() - 2));
        if (date.isEmpty())
            refuse(" in date", source);
        return date;
    }
    default:
        return source.toString();
    }
}

void dialect::Lexer::skipBlanks()
{
    while (m_at < m_statement.size() && m_statement[m_at].isSpace())
        ++m_at;
}

qsizetype dialect::Lexer::endOfText() const
{
    const QChar quote = m_statement[m_at];
    for (qsizetype end = m_at + 1; end < m_statement.size(); ++end) {
        if (m_statement[end].isNull())
            break;
        if (m_statement[end] != quote)
            continue;
        if (at(end + 1) != quote)
            return end + 1;
        ++end;
    }
    refuse(" in string", m_statement.sliced(m_at));
}

qsizetype dialect::Lexer::endOfNumber(Token::Kind &kind) const
{
    qsizetype end = m_at;
    const auto skipDigits = [&] {
        while (isDigit(at(end)))
            ++end;
    };
    skipDigits();
    kind = end - m_at <= maximumIntegerLength ? Token::Integer : Token::Fraction;
    if (at(end) == u'.') {
        kind = Token::Fraction;
        ++end;
        skipDigits();
    }
    if (at(end).toLower() == u'e') {
        const bool sign = at(end + 1) == u'+' || at(end + 1) == u'-';
        if (isDigit(at(end + (sign ? 2 : 1)))) {
            kind = Token::Fraction;
            end += 2;
            skipDigits();
        }
    }
    if (continuesWord(at(end)))
        refuse(" (missing operator)", m_statement.sliced(m_at));
    return end;
}

dialect::Token dialect::Lexer::next()
{
    skipBlanks();
    const qsizetype begin = m_at;
    if (begin == m_statement.size())
        return {Token::End, {}, begin};
    const QChar c = m_statement[begin];
    Token::Kind kind = Token::Symbol;
    if (beginsWord(c)) {
        kind = Token::Word;
        while (continuesWord(at(m_at)))
            ++m_at;
    } else if (isDigit(c) || (c == u'.' && isDigit(at(begin + 1)))) {
        m_at = endOfNumber(kind);
    } else if (c == u'\'' || c == u'"') {
        kind = Token::Text;
        m_at = endOfText();
    } else if (c == u'[') {
        const qsizetype close = m_statement.indexOf(u']', begin);
        if (close < 0 || close == begin + 1 || m_statement.sliced(begin, close - begin).contains(QChar(u'\0')))
            throw EngineError(EngineError::invalidBracketing,
                              QStringLiteral("Invalid bracketing of name '%1'.")
                                  .arg(m_statement.sliced(begin, std::min(quotedLength, m_statement.size() - begin))));
        kind = Token::BracketedName;
        m_at = close + 1;
    } else if (c == u'#') {
        const qsizetype close = m_statement.indexOf(u'#', begin + 1);
        if (close < 0)
            refuse(" in date", m_statement.sliced(begin));
        const bool hasTime = m_statement.sliced(begin, close - begin).contains(u':');
        kind = hasTime ? Token::Date : Token::Day;
        m_at = close + 1;
    } else if (QStringView two = m_statement.sliced(begin, std::min<qsizetype>(2, m_statement.size() - begin));
               two == u"<>" || two == u"<=" || two == u">=") {
        m_at += 2;
    } else if (QStringView(u"()=<>+-*/,.;&").contains(c)) {
        ++m_at;
    } else {
        refuse("", m_statement.sliced(begin));
    }
    return {kind, m_statement.sliced(begin, m_at - begin), begin};
}

dialect::Shape dialect::shapeOf(QStringView statement)
{
    Shape shape;
    shape.text.reserve(statement.size());
    Lexer lexer(statement);
    qsizetype copied = 0;
    for (Token token = lexer.next(); token.kind != Token::End; token = lexer.next()) {
        if (!token.isLiteral())
            continue;
        shape.text += statement.sliced(copied, token.begin - copied);
        // The lexer refuses control characters outside of texts, so none can be mistaken for a literal.
        shape.text += QChar(char16_t(token.kind));
        copied = token.begin + token.source.size();
        shape.literals.push_back({token.kind, token.value()});
    }
    shape.text += statement.sliced(copied);
    return shape;
}
