#include "platform/engine/dialect/Parser.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/Lexer.h"
#include "platform/engine/dialect/Schema.h"

#include <algorithm>

namespace dialect {
namespace {

// Deeper statements would only exhaust the stack, here or in the engine below; no form comes near.
constexpr int maximumNesting = 90;
constexpr int maximumDepth = 500;
constexpr qsizetype quotedLength = 80;

/// Error of the clause that is being read.
struct ClauseError {
    int number;
    const char *text;
};
constexpr ClauseError expressionError{EngineError::syntaxError, "Syntax error in query expression."};
constexpr ClauseError selectError{
    3141,
    "The SELECT statement includes a reserved word or an argument name that is misspelled "
    "or missing, or the punctuation is incorrect."};
constexpr ClauseError fromError{3131, "Syntax error in FROM clause."};
constexpr ClauseError joinError{3135, "Syntax error in JOIN operation."};
constexpr ClauseError orderError{3138, "Syntax error in ORDER BY clause."};
constexpr ClauseError insertError{3134, "Syntax error in INSERT INTO statement."};
constexpr ClauseError updateError{3144, "Syntax error in UPDATE statement."};
constexpr ClauseError deleteError{3128, "Specify the table containing the records you want to delete."};
constexpr ClauseError statementError{
    3129, "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'."};
constexpr ClauseError trailingError{EngineError::textAfterStatement, "Characters found after end of SQL statement."};

// Words that end an expression or a list, and so never are a bare name.
constexpr QStringView reservedWords[] = {
    u"SELECT", u"DISTINCT", u"FROM", u"WHERE", u"ORDER",  u"BY",    u"GROUP",  u"HAVING", u"INNER",
    u"LEFT",   u"RIGHT",    u"JOIN", u"ON",    u"AND",    u"OR",    u"NOT",    u"LIKE",   u"BETWEEN",
    u"IN",     u"IS",       u"NULL", u"AS",    u"INSERT", u"INTO",  u"VALUES", u"UPDATE", u"SET",
    u"DELETE", u"UNION",    u"ASC",  u"DESC",  u"TRUE",   u"FALSE", u"MOD",
};

class Parser
{
public:
    explicit Parser(QStringView text) : m_text(text)
    {
        Lexer lexer(text);
        do
            m_tokens.push_back(lexer.next());
        while (m_tokens.back().kind != Token::End);
    }

    Statement statement()
    {
        Statement statement;
        if (takeWord(u"SELECT")) {
            statement.select = select();
        } else if (takeWord(u"INSERT")) {
            m_clause = insertError;
            readInsert(statement);
        } else if (takeWord(u"UPDATE")) {
            m_clause = updateError;
            readUpdate(statement);
        } else if (takeWord(u"DELETE")) {
            m_clause = deleteError;
            readDelete(statement);
        } else {
            fail(statementError);
        }
        const bool closed = take(u";");
        if (peek().kind != Token::End)
            closed ? fail(trailingError) : missingOperator();
        return statement;
    }

    ExpressionPtr condition()
    {
        ExpressionPtr whole = expression();
        if (peek().kind != Token::End)
            missingOperator();
        return whole;
    }

private:
    // ---- tokens
    const Token &peek(size_t ahead = 0) const { return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)]; }
    const Token &advance()
    {
        const Token &token = m_tokens[m_at++];
        if (token.isLiteral())
            ++m_literals;
        return token;
    }
    bool isWord(QStringView word, size_t ahead = 0) const
    {
        return peek(ahead).kind == Token::Word && sameName(peek(ahead).source, word);
    }
    bool takeWord(QStringView word)
    {
        const bool found = isWord(word);
        m_at += found;
        return found;
    }
    bool take(QStringView symbol)
    {
        const bool found = peek().is(symbol);
        m_at += found;
        return found;
    }
    void expect(QStringView symbol)
    {
        if (!take(symbol))
            fail(m_clause);
    }
    static bool isReserved(QStringView word)
    {
        return std::ranges::any_of(reservedWords, [&](QStringView reserved) { return sameName(word, reserved); });
    }
    bool atName() const
    {
        return peek().kind == Token::BracketedName || (peek().kind == Token::Word && !isReserved(peek().source));
    }
    QString name()
    {
        if (!atName())
            fail(m_clause);
        return advance().value();
    }
    // Behind AS and behind a table's point even a reserved word is a name.
    QString anyName()
    {
        if (peek().kind != Token::Word && peek().kind != Token::BracketedName)
            fail(m_clause);
        return advance().value();
    }

    // ---- refusals
    [[noreturn]] void fail(const ClauseError &error) const
    {
        throw EngineError(error.number, QString::fromLatin1(error.text));
    }
    [[noreturn]] void failInExpression(const char *what) const
    {
        const QStringView rest = m_text.sliced(peek().begin);
        throw EngineError(EngineError::syntaxError,
                          QStringLiteral("%1 in query expression '%2'.")
                              .arg(QLatin1String(what), rest.first(std::min(rest.size(), quotedLength))));
    }
    [[noreturn]] void missingOperator() const { failInExpression("Syntax error (missing operator)"); }

    /// Counts how deep brackets lie within one another, for as long as it lives.
    class Nesting
    {
    public:
        explicit Nesting(int &depth) : m_depth(depth)
        {
            if (m_depth >= maximumNesting)
                throw EngineError::of(EngineError::tooComplex);
            ++m_depth;
        }
        ~Nesting() { --m_depth; }
        Q_DISABLE_COPY_MOVE(Nesting)

    private:
        int &m_depth;
    };

    // ---- statements
    std::unique_ptr<Select> select()
    {
        auto select = std::make_unique<Select>();
        m_clause = selectError;
        select->distinct = takeWord(u"DISTINCT");
        do
            select->outputs.push_back(output());
        while (take(u","));
        if (!takeWord(u"FROM"))
            peek().kind == Token::End || peek().is(u";") ? fail(m_clause) : missingOperator();
        m_clause = fromError;
        select->from = sources();
        select->where = where();
        if (takeWord(u"ORDER")) {
            m_clause = orderError;
            if (!takeWord(u"BY"))
                fail(m_clause);
            do
                select->order.push_back(orderKey());
            while (take(u","));
        }
        return select;
    }
    Output output()
    {
        Output output;
        if (take(u"*")) {
            output.value = make(Expression::AllColumns);
        } else if (atName() && peek(1).is(u".") && peek(2).is(u"*")) {
            output.value = make(Expression::AllColumns);
            output.value->qualifier = name();
            m_at += 2;
        } else {
            if (peek().kind == Token::End || peek().is(u",") || isWord(u"FROM"))
                fail(m_clause);
            output.value = expression();
            if (takeWord(u"AS"))
                output.alias = anyName();
        }
        return output;
    }
    OrderKey orderKey()
    {
        OrderKey key;
        key.value = expression();
        key.descending = takeWord(u"DESC");
        if (!key.descending)
            takeWord(u"ASC");
        return key;
    }
    ExpressionPtr where() { return takeWord(u"WHERE") ? expression() : nullptr; }

    static std::unique_ptr<Source> joined(Source::Join kind, std::unique_ptr<Source> left,
                                          std::unique_ptr<Source> right)
    {
        auto source = std::make_unique<Source>();
        source->join = kind;
        source->left = std::move(left);
        source->right = std::move(right);
        return source;
    }
    std::unique_ptr<Source> sources()
    {
        auto left = joins();
        while (take(u","))
            left = joined(Source::Comma, std::move(left), joins());
        return left;
    }
    Source::Join joinKind()
    {
        const Source::Join kind = takeWord(u"INNER") ? Source::Inner
            : takeWord(u"LEFT")                      ? Source::Left
            : takeWord(u"RIGHT")                     ? Source::Right
                                                     : Source::NoJoin;
        if (kind == Source::NoJoin)
            return kind;
        if (kind != Source::Inner)
            takeWord(u"OUTER");
        if (!takeWord(u"JOIN"))
            fail(joinError);
        return kind;
    }
    std::unique_ptr<Source> joins()
    {
        auto left = source();
        for (Source::Join kind = joinKind(); kind != Source::NoJoin; kind = joinKind()) {
            left = joined(kind, std::move(left), source());
            if (takeWord(u"ON"))
                left->condition = expression();
            else if (kind != Source::Inner)
                fail(joinError);
        }
        return left;
    }
    std::unique_ptr<Source> source()
    {
        const Nesting nesting(m_nesting);
        if (take(u"(")) {
            auto inner = joins();
            if (!take(u")"))
                fail(joinError);
            return inner;
        }
        // More tables than the engine below joins; the tree of joins stays shallow as well.
        if (++m_tables > 64)
            throw EngineError::of(EngineError::tooComplex);
        auto table = std::make_unique<Source>();
        table->table = name();
        if (takeWord(u"AS") || atName())
            table->alias = name();
        return table;
    }
    void readInsert(Statement &statement)
    {
        statement.kind = Statement::Insert;
        if (!takeWord(u"INTO"))
            fail(m_clause);
        statement.table = name();
        if (take(u"(")) {
            do
                statement.columns.push_back(name());
            while (take(u","));
            expect(u")");
        }
        if (takeWord(u"SELECT")) {
            statement.select = select();
            return;
        }
        if (!takeWord(u"VALUES"))
            fail(m_clause);
        expect(u"(");
        do {
            if (peek().is(u",") || peek().is(u")"))
                fail(m_clause);
            statement.values.push_back(expression());
        } while (take(u","));
        expect(u")");
    }
    void readUpdate(Statement &statement)
    {
        statement.kind = Statement::Update;
        statement.table = name();
        if (!takeWord(u"SET"))
            fail(m_clause);
        do {
            QString column = name();
            if (take(u".")) {
                if (!sameName(column, statement.table))
                    fail(m_clause);
                column = anyName();
            }
            statement.columns.push_back(column);
            expect(u"=");
            statement.values.push_back(expression());
        } while (take(u","));
        statement.where = where();
    }
    void readDelete(Statement &statement)
    {
        statement.kind = Statement::Delete;
        take(u"*");
        if (!takeWord(u"FROM"))
            fail(m_clause);
        m_clause = fromError;
        statement.table = name();
        statement.where = where();
    }

    // ---- expressions, loosest operator first
    static ExpressionPtr make(Expression::Kind kind, const QString &text = {})
    {
        auto expression = std::make_unique<Expression>();
        expression->kind = kind;
        expression->text = text;
        return expression;
    }
    static void addOperand(Expression &expression, ExpressionPtr operand)
    {
        expression.depth = std::max(expression.depth, operand->depth + 1);
        if (expression.depth > maximumDepth)
            throw EngineError::of(EngineError::tooComplex);
        expression.operands.push_back(std::move(operand));
    }
    template<typename... Operands>
    static ExpressionPtr make(Expression::Kind kind, const QString &text, ExpressionPtr operand, Operands... more)
    {
        ExpressionPtr expression = make(kind, text);
        addOperand(*expression, std::move(operand));
        (addOperand(*expression, std::move(more)), ...);
        return expression;
    }

    ExpressionPtr expression()
    {
        const Nesting nesting(m_nesting);
        return chain(Expression::Or, u"OR", &Parser::conjunction);
    }
    ExpressionPtr conjunction() { return chain(Expression::And, u"AND", &Parser::negation); }
    // However long, a chain is one node: criteria of twenty thousand terms nest no deeper than two.
    ExpressionPtr chain(Expression::Kind kind, QStringView word, ExpressionPtr (Parser::*term)())
    {
        ExpressionPtr first = (this->*term)();
        if (!isWord(word))
            return first;
        ExpressionPtr all = make(kind, {}, std::move(first));
        while (takeWord(word))
            addOperand(*all, (this->*term)());
        return all;
    }
    ExpressionPtr negation()
    {
        bool negate = false;
        while (takeWord(u"NOT"))
            negate = !negate;
        ExpressionPtr inner = comparison();
        return negate ? make(Expression::Not, {}, std::move(inner)) : std::move(inner);
    }
    ExpressionPtr comparison()
    {
        ExpressionPtr left = concatenation();
        for (;;) {
            const bool negated = isWord(u"NOT") && (isWord(u"LIKE", 1) || isWord(u"BETWEEN", 1) || isWord(u"IN", 1));
            m_at += negated;
            if (takeWord(u"LIKE")) {
                left = make(Expression::Like, {}, std::move(left), concatenation());
            } else if (takeWord(u"BETWEEN")) {
                ExpressionPtr low = concatenation();
                if (!takeWord(u"AND"))
                    failInExpression("Between operator without And");
                left = make(Expression::Between, {}, std::move(left), std::move(low), concatenation());
            } else if (takeWord(u"IN")) {
                left = make(Expression::In, {}, std::move(left));
                if (!take(u"("))
                    failInExpression("In operator without ()");
                do
                    addOperand(*left, concatenation());
                while (take(u","));
                closeBracket();
            } else if (takeWord(u"IS")) {
                const bool isNot = takeWord(u"NOT");
                if (!takeWord(u"NULL"))
                    missingOperator();
                left = make(Expression::IsNull, {}, std::move(left));
                left->negated = isNot;
                continue;
            } else if (atComparison()) {
                const QString sign = advance().value();
                left = make(Expression::Comparison, sign, std::move(left), concatenation());
            } else {
                return left;
            }
            left->negated = negated;
        }
    }
    bool atComparison() const
    {
        constexpr QStringView signs[] = {u"=", u"<>", u"<", u">", u"<=", u">="};
        return peek().kind == Token::Symbol && std::ranges::find(signs, peek().source) != std::end(signs);
    }
    ExpressionPtr concatenation()
    {
        ExpressionPtr first = sum();
        if (!peek().is(u"&"))
            return first;
        ExpressionPtr all = make(Expression::Concatenation, {}, std::move(first));
        while (take(u"&"))
            addOperand(*all, sum());
        return all;
    }
    ExpressionPtr sum() { return arithmetic(u"+-", &Parser::product); }
    ExpressionPtr product() { return arithmetic(u"*/", &Parser::signedValue); }
    ExpressionPtr arithmetic(QStringView signs, ExpressionPtr (Parser::*term)())
    {
        ExpressionPtr left = (this->*term)();
        while (peek().kind == Token::Symbol && signs.contains(peek().source)) {
            const QString sign = advance().value();
            left = make(Expression::Arithmetic, sign, std::move(left), (this->*term)());
        }
        return left;
    }
    ExpressionPtr signedValue()
    {
        bool negate = false;
        for (; peek().is(u"-") || peek().is(u"+"); advance())
            negate ^= peek().is(u"-");
        ExpressionPtr inner = value();
        if (!negate)
            return inner;
        const bool number = inner->kind == Expression::Integer || inner->kind == Expression::Fraction;
        if (!number || inner->negated)
            return make(Expression::Negation, {}, std::move(inner));
        inner->negated = true;
        return inner;
    }
    void closeBracket()
    {
        if (take(u")"))
            return;
        if (peek().kind == Token::End || peek().is(u";"))
            failInExpression("Missing ), ], or Item");
        missingOperator();
    }
    ExpressionPtr value()
    {
        switch (peek().kind) {
        case Token::Integer:
            return literal(Expression::Integer);
        case Token::Fraction:
            return literal(Expression::Fraction);
        case Token::Text:
            return literal(Expression::Text);
        case Token::Date:
            return literal(Expression::Date);
        case Token::Day: {
            ExpressionPtr day = literal(Expression::Date);
            day->wholeDay = true;
            return day;
        }
        case Token::BracketedName:
            return column();
        case Token::Word:
            return word();
        case Token::Symbol:
            if (take(u"(")) {
                ExpressionPtr inner = expression();
                closeBracket();
                return inner;
            }
            break;
        case Token::End:
            break;
        }
        missingOperator();
    }
    ExpressionPtr literal(Expression::Kind kind)
    {
        const int number = m_literals;
        ExpressionPtr literal = make(kind, advance().value());
        literal->literal = number;
        return literal;
    }
    ExpressionPtr word()
    {
        if (takeWord(u"NULL"))
            return make(Expression::Null);
        if (takeWord(u"TRUE"))
            return make(Expression::YesNo, QStringLiteral("-1"));
        if (takeWord(u"FALSE"))
            return make(Expression::YesNo, QStringLiteral("0"));
        if (isReserved(peek().source))
            missingOperator();
        return peek(1).is(u"(") ? call() : column();
    }
    ExpressionPtr call()
    {
        ExpressionPtr call = make(Expression::Call, advance().value());
        take(u"(");
        if (take(u"*")) {
            addOperand(*call, make(Expression::AllColumns));
        } else if (!peek().is(u")")) {
            do
                addOperand(*call, expression());
            while (take(u","));
        }
        closeBracket();
        return call;
    }
    ExpressionPtr column()
    {
        ExpressionPtr column = make(Expression::Column);
        column->bracketed = peek().kind == Token::BracketedName;
        column->text = advance().value();
        if (take(u".")) {
            if (peek().kind != Token::Word && peek().kind != Token::BracketedName)
                missingOperator();
            column->bracketed = false;
            column->qualifier = column->text;
            column->text = advance().value();
        }
        return column;
    }

    QStringView m_text;
    std::vector<Token> m_tokens;
    size_t m_at = 0;
    int m_literals = 0, m_nesting = 0, m_tables = 0;
    ClauseError m_clause = expressionError;
};

}

Statement parse(QStringView statement) { return Parser(statement).statement(); }

ExpressionPtr parseCondition(QStringView condition) { return Parser(condition).condition(); }

}
