#pragma once

#include <QString>

#include <vector>

namespace dialect {

/// One word, literal or sign of a statement.
struct Token {
    /// A day is a date without a time.
    enum Kind { Word, BracketedName, Integer, Fraction, Text, Date, Day, Symbol, End };
    Kind kind = End;
    QStringView source; ///< as it stands in the statement, quotes and brackets included
    qsizetype begin = 0; ///< where it stands

    bool isLiteral() const { return kind >= Integer && kind <= Day; }
    bool is(QStringView symbol) const { return kind == Symbol && source == symbol; }
    /// A name without its brackets, a text without its quotes, a date in its stored form.
    /// @throws EngineError for a malformed date.
    QString value() const;
};

/// Takes a statement apart into its tokens.
class Lexer
{
public:
    explicit Lexer(QStringView statement) : m_statement(statement) { }
    /// The next token; Token::End again and again behind the last.
    /// @throws EngineError for a character that means nothing, an open quote, bracket or date.
    Token next();

private:
    QChar at(qsizetype position) const { return position < m_statement.size() ? m_statement[position] : QChar(u'\0'); }
    void skipBlanks();
    qsizetype endOfText() const;
    qsizetype endOfNumber(Token::Kind &kind) const;

    QStringView m_statement;
    qsizetype m_at = 0;
};

/// A literal cut out of a statement.
struct Literal {
    Token::Kind kind;
    QString value;
};

/// A statement without its literals: statements of one shape are translated alike. The kind of each
/// literal is part of the shape.
struct Shape {
    QString text;
    std::vector<Literal> literals;
};
Shape shapeOf(QStringView statement);

}
