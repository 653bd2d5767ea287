#include "platform/reportengine/FormulaParser.h"

#include "platform/reportengine/ResultCode.h"

#include <QDate>
#include <QMap>

namespace {
bool continuesWord(QChar c) { return c.isLetterOrNumber() || c == '_'; }

/// The equality tests of one field among the alternatives become one test for membership: a long list of record numbers
/// then costs no more than a short one.
void gatherEqualities(FormulaCondition &any)
{
    using Subject = std::pair<int, FormulaConstant::Kind>;
    QMap<Subject, FormulaCondition> lists;
    std::vector<FormulaCondition> others;
    for (FormulaCondition &part : any.parts) {
        if (part.kind != FormulaCondition::Equal) {
            others.push_back(std::move(part));
            continue;
        }
        FormulaCondition &list = lists[{part.field, part.constants.front().kind}];
        list.kind = FormulaCondition::OneOf;
        list.field = part.field;
        list.constants.push_back(std::move(part.constants.front()));
    }
    for (FormulaCondition &list : lists)
        others.push_back(std::move(list));
    any.parts = std::move(others);
}
}

FormulaParser::FormulaParser(const QString &text, FieldList &fields, int line)
    : m_text(text), m_fields(fields), m_line(line)
{
}

FormulaCondition FormulaParser::parse()
{
    if (m_text.size() > Formula::maxLength)
        fail(ResultCode::outOfMemory, QStringLiteral("the formula is too long"));
    skipBlanks();
    if (m_position == m_text.size())
        return {};

    std::vector<Chain> open(1);
    int terms = 0;
    for (;;) {
        if (takeSign(QLatin1StringView("("))) {
            if (open.size() > Formula::maxBrackets)
                fail(ResultCode::outOfMemory, QStringLiteral("too many brackets within each other"));
            open.emplace_back();
            continue;
        }
        if (++terms > Formula::maxTerms)
            fail(ResultCode::outOfMemory, QStringLiteral("too many terms"));
        open.back().all.parts.push_back(comparison());
        while (open.size() > 1 && takeSign(QLatin1StringView(")"))) {
            FormulaCondition inner = closed(std::move(open.back()));
            open.pop_back();
            open.back().all.parts.push_back(std::move(inner));
        }
        if (takeWord(QLatin1StringView("and")))
            continue;
        if (takeWord(QLatin1StringView("or"))) {
            Chain &chain = open.back();
            chain.any.parts.push_back(std::exchange(chain.all, {}));
            continue;
        }
        break;
    }
    skipBlanks();
    if (m_position < m_text.size())
        fail(ResultCode::errorInFormula, QStringLiteral("\"and\" or \"or\" expected"));
    if (open.size() > 1)
        fail(ResultCode::errorInFormula, QStringLiteral("a bracket is not closed"));
    return closed(std::move(open.back()));
}

FormulaCondition FormulaParser::closed(Chain chain)
{
    chain.any.kind = FormulaCondition::Any;
    chain.any.parts.push_back(std::move(chain.all));
    for (FormulaCondition &part : chain.any.parts)
        if (part.kind == FormulaCondition::All && part.parts.size() == 1)
            part = FormulaCondition(std::move(part.parts.front()));
    if (chain.any.parts.size() > 1)
        gatherEqualities(chain.any);
    return chain.any.parts.size() == 1 ? std::move(chain.any.parts.front()) : std::move(chain.any);
}

FormulaCondition FormulaParser::comparison()
{
    FormulaCondition condition;
    condition.field = field();
    if (takeWord(QLatin1StringView("in"))) {
        condition.kind = FormulaCondition::Range;
        condition.constants.push_back(constant());
        if (!takeWord(QLatin1StringView("to")))
            fail(ResultCode::errorInFormula, QStringLiteral("\"to\" expected"));
    } else {
        condition.kind = comparisonSign();
    }
    condition.constants.push_back(constant());
    return condition;
}

int FormulaParser::field()
{
    expectSign(QLatin1StringView("{"));
    const qsizetype end = m_text.indexOf('}', m_position);
    if (end < 0)
        fail(ResultCode::errorInFormula, QStringLiteral("\"}\" expected"));
    const QStringView name = m_text.sliced(m_position, end - m_position);
    const int field = m_fields.add(name, m_line);
    if (field < 0)
        fail(ResultCode::invalidFieldName, QStringLiteral("{%1} names no column of a table").arg(name.left(100)));
    m_position = end + 1;
    return field;
}

FormulaCondition::Kind FormulaParser::comparisonSign()
{
    static constexpr std::pair<QLatin1StringView, FormulaCondition::Kind> signs[] = {
        {QLatin1StringView("<>"), FormulaCondition::NotEqual},
        {QLatin1StringView("<="), FormulaCondition::LessOrEqual},
        {QLatin1StringView(">="), FormulaCondition::GreaterOrEqual},
        {QLatin1StringView("="), FormulaCondition::Equal},
        {QLatin1StringView("<"), FormulaCondition::Less},
        {QLatin1StringView(">"), FormulaCondition::Greater},
    };
    for (const auto &[sign, kind] : signs)
        if (takeSign(sign))
            return kind;
    fail(ResultCode::errorInFormula, QStringLiteral("a comparison expected"));
}

FormulaConstant FormulaParser::constant()
{
    skipBlanks();
    const QChar first = m_position < m_text.size() ? m_text[m_position] : QChar();
    if (first == '\'' || first == '"')
        return quotedText();
    if (takeWord(QLatin1StringView("date")))
        return date();
    if (takeWord(QLatin1StringView("true")))
        return {FormulaConstant::Number, {}, -1};
    if (takeWord(QLatin1StringView("false")))
        return {FormulaConstant::Number, {}, 0};
    return {FormulaConstant::Number, {}, number()};
}

FormulaConstant FormulaParser::quotedText()
{
    const QChar quote = m_text[m_position++];
    QString text;
    for (;;) {
        const qsizetype end = m_text.indexOf(quote, m_position);
        if (end < 0)
            fail(ResultCode::errorInFormula, QStringLiteral("the text is not closed"));
        text += m_text.sliced(m_position, end - m_position);
        m_position = end + 1;
        if (m_position == m_text.size() || m_text[m_position] != quote)
            return {FormulaConstant::Text, text, 0};
        text += quote;
        ++m_position;
    }
}

FormulaConstant FormulaParser::date()
{
    expectSign(QLatin1StringView("("));
    const int year = wholeNumber();
    expectSign(QLatin1StringView(","));
    const int month = wholeNumber();
    expectSign(QLatin1StringView(","));
    const int day = wholeNumber();
    expectSign(QLatin1StringView(")"));
    const QDate date(year, month, day);
    if (!date.isValid() || year < 1 || year > 9999)
        fail(ResultCode::errorInFormula, QStringLiteral("there is no such day"));
    return {FormulaConstant::Date, date.toString(Qt::ISODate), 0};
}

double FormulaParser::number()
{
    skipBlanks();
    const auto isDigit = [&](qsizetype at) { return at < m_text.size() && m_text[at] >= '0' && m_text[at] <= '9'; };
    const auto isOneOf = [&](qsizetype at, const char *characters) {
        return at < m_text.size() && QLatin1StringView(characters).contains(m_text[at]);
    };
    qsizetype end = m_position;
    if (isOneOf(end, "-"))
        ++end;
    while (isDigit(end) || isOneOf(end, "."))
        ++end;
    if (isOneOf(end, "eE") && (isDigit(end + 1) || (isOneOf(end + 1, "+-") && isDigit(end + 2)))) {
        end += 2;
        while (isDigit(end))
            ++end;
    }
    bool valid = false;
    const double value = m_text.sliced(m_position, end - m_position).toDouble(&valid);
    if (!valid || (end < m_text.size() && continuesWord(m_text[end])))
        fail(ResultCode::errorInFormula, QStringLiteral("a value expected"));
    m_position = end;
    return value;
}

int FormulaParser::wholeNumber()
{
    const double value = number();
    if (value != std::floor(value) || std::abs(value) > 9999)
        fail(ResultCode::errorInFormula, QStringLiteral("there is no such day"));
    return int(value);
}

void FormulaParser::skipBlanks()
{
    while (m_position < m_text.size() && m_text[m_position].isSpace())
        ++m_position;
}

bool FormulaParser::takeWord(QLatin1StringView word)
{
    skipBlanks();
    const QStringView rest = m_text.sliced(m_position);
    if (!rest.startsWith(word, Qt::CaseInsensitive) || (rest.size() > word.size() && continuesWord(rest[word.size()])))
        return false;
    m_position += word.size();
    return true;
}

bool FormulaParser::takeSign(QLatin1StringView sign)
{
    skipBlanks();
    if (!m_text.sliced(m_position).startsWith(sign))
        return false;
    m_position += sign.size();
    return true;
}

void FormulaParser::expectSign(QLatin1StringView sign)
{
    if (!takeSign(sign))
        fail(ResultCode::errorInFormula, QStringLiteral("\"%1\" expected").arg(sign));
}

void FormulaParser::fail(int code, const QString &what) const
{
    throw ReportError(code, QStringLiteral("formula, character %1: %2").arg(m_position + 1).arg(what));
}
