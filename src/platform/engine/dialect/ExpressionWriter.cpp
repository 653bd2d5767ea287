#include "platform/engine/dialect/ExpressionWriter.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/SqlText.h"
#include "platform/text/Format.h"

#include <algorithm>
#include <map>

namespace dialect {
namespace {

// What is repeated in the written statement may not grow it without bounds.
constexpr qsizetype maximumRepeated = 100'000;
// An engine may read a BETWEEN as two comparisons, and one within another as four.
constexpr int maximumBetweens = 10;
// The engine below takes no more arguments to a function.
constexpr qsizetype maximumArguments = 100;

bool isNumber(ValueKind kind)
{
    return kind == ValueKind::Long || kind == ValueKind::Number || kind == ValueKind::Currency
        || kind == ValueKind::YesNo;
}

QString negatedIf(bool negated, const QString &sql) { return negated ? QLatin1String("(NOT ") + sql + u')' : sql; }

// The engine below nests a plain chain as deep as it is long, and has a limit there.
QString balanced(QLatin1String separator, const QStringList &terms, qsizetype from, qsizetype to)
{
    if (to - from == 1)
        return terms[from];
    const qsizetype middle = (from + to) / 2;
    return u'(' + balanced(separator, terms, from, middle) + separator + balanced(separator, terms, middle, to) + u')';
}

QString concatenation(const char *form, QStringList parts)
{
    if (parts.size() > maximumArguments) {
        const qsizetype middle = parts.size() / 2;
        parts = {concatenation(form, parts.first(middle)), concatenation(form, parts.sliced(middle))};
    }
    return filled(form, {parts.join(QLatin1String(", "))});
}

bool isShortDate(const ExpressionPtr &expression)
{
    return expression->kind == Expression::Call && sameName(expression->text, u"format")
        && expression->operands.size() == 2 && expression->operands[1]->kind == Expression::Text
        && sameName(expression->operands[1]->text, u"short date");
}

bool comparesTexts(const std::vector<Written> &values)
{
    const auto fits = [](ValueKind kind) { return !isNumber(kind) && kind != ValueKind::Date; };
    const auto isText = [](ValueKind kind) { return kind == ValueKind::Text; };
    return std::ranges::all_of(values, fits, &Written::kind) && std::ranges::any_of(values, isText, &Written::kind);
}

void requireArguments(const Expression &call, size_t count)
{
    const bool star = !call.operands.empty() && call.operands.front()->kind == Expression::AllColumns;
    if (call.operands.size() != count || star)
        throw EngineError(
            EngineError::syntaxError,
            QStringLiteral("Wrong number of arguments used with function in query expression '%1()'.").arg(call.text));
}

}

// ---- tables and columns

void ExpressionWriter::addTable(const NamedTable &table)
{
    if (std::ranges::any_of(m_tables, [&](const NamedTable &other) { return sameName(other.name, table.name); }))
        throw EngineError(EngineError::sameTableTwice,
                          QStringLiteral("Cannot join more than one table with the same name '%1'.").arg(table.name));
    m_tables.push_back(table);
}

FoundColumn ExpressionWriter::find(QStringView qualifier, QStringView name) const
{
    FoundColumn found;
    for (const NamedTable &candidate : m_tables) {
        if (!qualifier.isEmpty() && !sameName(candidate.name, qualifier))
            continue;
        const int column = candidate.table->find(name);
        if (column >= 0)
            found = {found.times + 1, &candidate, column};
    }
    return found;
}

FoundColumn ExpressionWriter::find(const Expression &column) const
{
    const FoundColumn found = find(column.qualifier, column.text);
    const qsizetype point = column.text.indexOf(u'.');
    if (found.times > 0 || !column.bracketed || point < 0)
        return found;
    // [employee.lastname]
    return find(QStringView(column.text).first(point), QStringView(column.text).sliced(point + 1));
}

QString ExpressionWriter::positionName(size_t position) { return QStringLiteral("column") + QString::number(position); }

Written ExpressionWriter::column(const NamedTable &table, int column)
{
    const Column &found = table.table->columns[column];
    if (table.byPosition)
        return {quotedName(positionName(column + 1)), found.kind};
    return {quotedName(table.name) + u'.' + quotedName(found.name), found.kind};
}

Written ExpressionWriter::column(const Expression &expression)
{
    if (m_place == Place::Output && m_plainColumn.isEmpty())
        m_plainColumn = expression.text;
    const FoundColumn found = find(expression);
    if (found.times == 1) {
        requireJoined(*found.table);
        return column(*found.table, found.column);
    }
    if (found.times > 1)
        throw EngineError(
            EngineError::ambiguousColumn,
            QStringLiteral("The specified field '%1' could refer to more than one table listed in the FROM "
                           "clause of your SQL statement.")
                .arg(expression.text));
    addMissing(expression.qualifier.isEmpty() ? expression.text : expression.qualifier + u'.' + expression.text);
    return {QStringLiteral("NULL")};
}

void ExpressionWriter::requireJoined(const NamedTable &table) const
{
    const bool joined = m_joined.empty() || (&table >= m_joined.data() && &table < m_joined.data() + m_joined.size());
    if (!joined)
        throw EngineError(
            EngineError::notJoined,
            QStringLiteral("JOIN operation refers to a field of '%1', which is not one of the joined tables.")
                .arg(table.name));
}

void ExpressionWriter::addMissing(const QString &name)
{
    if (!m_missing.contains(name, Qt::CaseInsensitive))
        m_missing.append(name);
}

void ExpressionWriter::refuseMissing() const
{
    if (!m_missing.isEmpty())
        throw EngineError(EngineError::unknownColumn,
                          QStringLiteral("Too few parameters. Expected %1.").arg(m_missing.size()));
}

// ---- literals

QString ExpressionWriter::parameter(const Parameter &parameter, ValueKind kind)
{
    parameters.push_back(parameter);
    return filled(of(m_language.parameter, kind), {QString::number(parameters.size())});
}

void ExpressionWriter::pin(const Expression &literal)
{
    if (literal.literal >= 0)
        pinned.push_back({literal.literal, literal.text});
}

Written ExpressionWriter::literal(const Expression &expression)
{
    return literal(expression, Parameter{expression.literal, expression.negated});
}

Written ExpressionWriter::literal(const Expression &expression, const Parameter &use)
{
    constexpr ValueKind kinds[] = {ValueKind::Long, ValueKind::Number, ValueKind::Text, ValueKind::Date};
    if (expression.kind == Expression::YesNo)
        return {expression.text, ValueKind::YesNo};
    const ValueKind kind = use.storedAs != ValueKind::Unknown ? use.storedAs
        : use.shortDate                                       ? ValueKind::Text
                                                              : kinds[expression.kind];
    return {m_literals == Literals::Inline ? inlineLiteral(expression, use, kind) : parameter(use, kind), kind};
}

QString ExpressionWriter::inlineLiteral(const Expression &expression, const Parameter &use, ValueKind kind) const
{
    const char *const form = of(m_language.literal, kind);
    if (expression.kind == Expression::Date)
        return filled(form, {quotedText(use.shortDate ? Format::shortDate(expression.text) : expression.text)});
    if (expression.kind == Expression::Text && use.pattern)
        return filled(form, {quotedText(m_language.patternText(expression.text))});
    if (expression.kind == Expression::Text && use.storedAs == ValueKind::Unknown)
        return filled(form, {quotedText(expression.text)});
    if (expression.kind == Expression::Text) {
        const Written text{filled(of(m_language.literal, ValueKind::Text), {quotedText(expression.text)}),
                           ValueKind::Text};
        return stored(text, Column{{}, use.storedAs});
    }
    // A whole number of any length stays a fraction; without a point the engine below would take it for an integer.
    QString number = expression.text;
    if (expression.kind == Expression::Fraction && !number.contains(u'.')
        && !number.contains(u'e', Qt::CaseInsensitive))
        number += QLatin1String(".0");
    number = filled(form, {number});
    return expression.negated ? QLatin1String("(-") + number + u')' : number;
}

QString ExpressionWriter::filledFor(const Language::ByKind &forms, const Written &value) const
{
    return filled(of(forms, value.kind), {value.sql});
}

QString ExpressionWriter::asText(const Written &value) const { return filledFor(m_language.asText, value); }

QString ExpressionWriter::stored(const Expression &expression, const Column &column)
{
    if (expression.kind == Expression::Null)
        return column.kind == ValueKind::YesNo ? QStringLiteral("0") : QStringLiteral("NULL");
    if (expression.literal >= 0)
        return parameter({.literal = expression.literal, .negated = expression.negated, .storedAs = column.kind},
                         column.kind);
    return stored(value(expression), column);
}

QString ExpressionWriter::stored(const Written &written, const Column &column) const
{
    // What was read from a column of the same kind fits as it is, but for a yes/no that is empty behind an outer join.
    if (written.kind == column.kind && column.kind != ValueKind::YesNo)
        return written.sql;
    return filled(of(m_language.stored, column.kind),
                  {storable(written, column.kind), QString::number(int(column.kind))});
}

// A text may hold a number or a date; a date is no number, nor is any text a yes/no.
QString ExpressionWriter::storable(const Written &written, ValueKind kind) const
{
    if (!m_language.isTyped || written.kind == ValueKind::Null)
        return written.sql;
    const bool text = written.kind == ValueKind::Text;
    const bool wrong = text ? kind == ValueKind::YesNo : (written.kind == ValueKind::Date) != (kind == ValueKind::Date);
    if (kind == ValueKind::Text)
        return asText(written);
    if (wrong)
        throw EngineError::of(EngineError::typeMismatch);
    return kind == ValueKind::Date ? written.sql : filledFor(m_language.asNumber, written);
}

// ---- conditions

QString ExpressionWriter::condition(const Expression &expression)
{
    switch (expression.kind) {
    case Expression::And:
    case Expression::Or: {
        QStringList terms;
        for (const ExpressionPtr &operand : expression.operands)
            terms.append(condition(*operand));
        return balanced(QLatin1String(expression.kind == Expression::And ? " AND " : " OR "), terms, 0, terms.size());
    }
    case Expression::Not:
        return negatedIf(true, condition(*expression.operands[0]));
    case Expression::Comparison:
        return comparison(expression);
    case Expression::Like:
        return like(expression);
    case Expression::Between:
        return between(expression);
    case Expression::In:
        return in(expression);
    case Expression::IsNull:
        return u'(' + value(*expression.operands[0]).sql
            + QLatin1String(expression.negated ? " IS NOT NULL)" : " IS NULL)");
    default: {
        const Written written = value(expression);
        if (written.kind == ValueKind::Text)
            throw EngineError::of(EngineError::typeMismatch);
        // A date counts as a yes.
        if (written.kind == ValueKind::Date)
            return u'(' + written.sql + QLatin1String(" = ") + written.sql + u')';
        return u'(' + written.sql + QLatin1String(" <> 0)");
    }
    }
}

QString ExpressionWriter::joinCondition(const Expression &expression, size_t from, size_t to)
{
    m_joined = std::span(m_tables).subspan(from, to - from);
    const QString sql = condition(expression);
    m_joined = {};
    return sql;
}

// A literal is brought into the kind of what it is compared with, and must fit there.
Written ExpressionWriter::comparedValue(const Expression &operand, ValueKind other, bool shortDates)
{
    if (!operand.isLiteral())
        return value(operand);
    Parameter use{operand.literal, operand.negated};
    if (operand.kind == Expression::Date) {
        const bool isDay = operand.wholeDay && other == ValueKind::Date;
        use.shortDate = shortDates || isDay;
        if (!shortDates && (other == ValueKind::Text || isNumber(other)))
            throw EngineError::of(EngineError::typeMismatch);
        const Written written = literal(operand, use);
        return isDay ? Written{written.sql, ValueKind::Date, true} : written;
    }
    if (operand.kind == Expression::Text) {
        use.storedAs = other == ValueKind::Date ? ValueKind::Date
            : isNumber(other)                   ? ValueKind::Number
                                                : ValueKind::Unknown;
        return literal(operand, use);
    }
    if (other == ValueKind::Date)
        throw EngineError::of(EngineError::typeMismatch);
    return literal(operand, use);
}

std::vector<Written> ExpressionWriter::comparedValues(const Expression &expression)
{
    const auto &operands = expression.operands;
    const bool shortDates = std::ranges::any_of(operands, isShortDate);
    std::vector<Written> values(operands.size());
    // Where a literal comes first, the next operand says what it is compared with.
    const size_t leading = operands[0]->isLiteral() ? 1 : 0;
    values[leading] = comparedValue(*operands[leading], ValueKind::Unknown, shortDates);
    for (size_t i = 0; i < operands.size(); ++i)
        if (i != leading)
            values[i] = comparedValue(*operands[i], values[leading].kind, shortDates);
    return values;
}

ExpressionWriter::Way ExpressionWriter::wayBetween(const Written &a, const Written &b)
{
    if ((a.kind == ValueKind::Text && isNumber(b.kind)) || (b.kind == ValueKind::Text && isNumber(a.kind)))
        return Way::ByNumber;
    return a.isDay || b.isDay ? Way::ByDay : Way::AsStored;
}

QString ExpressionWriter::taken(const Written &value, Way way) const
{
    if (way == Way::ByNumber)
        return filledFor(m_language.byValue, value);
    if (way == Way::ByDay && !value.isDay)
        return filledFor(m_language.day, value);
    return value.sql;
}

QString ExpressionWriter::key(const Written &value) const
{
    return value.kind == ValueKind::Text ? filled(m_language.key, {value.sql}) : value.sql;
}

QStringList ExpressionWriter::comparable(const std::vector<Written> &values, Way way) const
{
    const auto isDate = [](const Written &value) { return value.kind == ValueKind::Date; };
    const auto isNull = [](const Written &value) { return value.kind == ValueKind::Null; };
    const bool texts = comparesTexts(values);
    // A date beside something else is the text that it is shown as.
    const bool datesAsTexts = m_language.isTyped && way == Way::AsStored && std::ranges::any_of(values, isDate)
        && !std::ranges::all_of(values, [&](const Written &value) { return isDate(value) || isNull(value); });
    QStringList forms;
    for (const Written &value : values)
        forms.append(texts ? filled(m_language.key, {value.sql}) : datesAsTexts ? asText(value) : taken(value, way));
    return forms;
}

QString ExpressionWriter::comparison(const Expression &expression)
{
    const std::vector<Written> values = comparedValues(expression);
    const QStringList sides = comparable(values, wayBetween(values[0], values[1]));
    return u'(' + sides[0] + u' ' + expression.text + u' ' + sides[1] + u')';
}

QString ExpressionWriter::between(const Expression &expression)
{
    if (++m_betweens > maximumBetweens)
        throw EngineError::of(EngineError::tooComplex);
    const std::vector<Written> values = comparedValues(expression);
    --m_betweens;
    if (values[0].sql.size() + values[1].sql.size() + values[2].sql.size() > maximumRepeated)
        throw EngineError::of(EngineError::tooComplex);
    const Way way = std::max(
        {wayBetween(values[0], values[1]), wayBetween(values[0], values[2]), wayBetween(values[1], values[2])});
    // The bounds may stand in either order.
    if (way != Way::ByDay) {
        const QStringList sides = comparable(values, way);
        return negatedIf(expression.negated, filled(m_language.between, {sides[0], sides[1], sides[2]}));
    }
    // A day as a bound is the ten characters in which a date and time begins.
    const auto bound = [&](const Written &value) { return value.isDay ? value.sql : asText(value); };
    const auto upTo = [&](const QString &limit) {
        return QStringLiteral("substr(%1, 1, length(%2))").arg(bound(values[0]), limit);
    };
    const QString lower = filled(m_language.lesser, {bound(values[1]), bound(values[2])});
    const QString upper = filled(m_language.greater, {bound(values[1]), bound(values[2])});
    return negatedIf(expression.negated,
                     u'(' + upTo(lower) + QLatin1String(" >= ") + lower + QLatin1String(" AND ") + upTo(upper)
                         + QLatin1String(" <= ") + upper + u')');
}

QString ExpressionWriter::in(const Expression &expression)
{
    const std::vector<Written> values = comparedValues(expression);
    std::map<Way, std::vector<Written>> lists; // what is looked for, then those that it is compared with in one way
    for (size_t i = 1; i < values.size(); ++i) {
        std::vector<Written> &list = lists[wayBetween(values[0], values[i])];
        if (list.empty())
            list.push_back(values[0]);
        list.push_back(values[i]);
    }
    QStringList tests;
    for (const auto &[way, list] : lists) {
        const QStringList sides = comparable(list, way);
        tests.append(sides[0] + QLatin1String(" IN (") + sides.sliced(1).join(QLatin1String(", ")) + u')');
    }
    return negatedIf(expression.negated, u'(' + tests.join(QLatin1String(" OR ")) + u')');
}

QString ExpressionWriter::like(const Expression &expression)
{
    const QString text = asText(value(*expression.operands[0]));
    const Expression &pattern = *expression.operands[1];
    const bool known = pattern.kind == Expression::Text;
    const Written written = known ? literal(pattern, {.literal = pattern.literal, .pattern = true}) : value(pattern);
    return negatedIf(expression.negated,
                     known ? filled(m_language.likePattern, {text, written.sql})
                           : filled(m_language.like, {text, asText(written)}));
}

// ---- values

Written ExpressionWriter::value(const Expression &expression)
{
    switch (expression.kind) {
    case Expression::Integer:
    case Expression::Fraction:
    case Expression::Text:
    case Expression::Date:
    case Expression::YesNo:
        return literal(expression);
    case Expression::Null:
        return {QStringLiteral("NULL"), ValueKind::Null};
    case Expression::Column:
        return column(expression);
    case Expression::Negation:
        return {QLatin1String("(-") + number(*expression.operands[0]).sql + u')', ValueKind::Number};
    case Expression::Arithmetic:
        return arithmetic(expression);
    case Expression::Concatenation: {
        QStringList parts;
        for (const ExpressionPtr &operand : expression.operands)
            parts.append(asText(value(*operand)));
        return {concatenation(m_language.concatenation, parts), ValueKind::Text};
    }
    case Expression::Call:
        return function(expression);
    case Expression::AllColumns:
        throw EngineError(EngineError::syntaxError, QStringLiteral("Syntax error in query expression '*'."));
    default:
        return {filled(m_language.conditionValue, {condition(expression)}), ValueKind::YesNo};
    }
}

Written ExpressionWriter::output(const Expression &expression)
{
    m_place = Place::Output;
    Written written = value(expression);
    m_place = Place::Row;
    return written;
}

void ExpressionWriter::refuseMixedCount() const
{
    if (m_counts && !m_plainColumn.isEmpty())
        throw EngineError(
            EngineError::notAggregated,
            QStringLiteral("You tried to execute a query that does not include the specified expression '%1' as "
                           "part of an aggregate function.")
                .arg(m_plainColumn));
}

Written ExpressionWriter::number(const Expression &expression)
{
    Written written = value(expression);
    if (written.kind == ValueKind::Date)
        throw EngineError::of(EngineError::typeMismatch);
    const bool isNumbered = isNumber(written.kind);
    return isNumbered ? written : Written{filledFor(m_language.asNumber, written), ValueKind::Number};
}

Written ExpressionWriter::arithmetic(const Expression &expression)
{
    const QString left = number(*expression.operands[0]).sql, right = number(*expression.operands[1]).sql;
    const QString sql = expression.text == u"/" ? filled(m_language.quotient, {left, right})
                                                : filled(m_language.arithmetic, {left, expression.text, right});
    return {sql, ValueKind::Number};
}

bool ExpressionWriter::same(const Expression &a, const Expression &b)
{
    if (a.kind != b.kind || a.negated != b.negated || a.operands.size() != b.operands.size())
        return false;
    if (a.kind == Expression::Column) {
        const FoundColumn first = find(a), second = find(b);
        return first.times == 1 && second.times == 1 && first.table == second.table && first.column == second.column;
    }
    if (a.isLiteral()) {
        pin(a);
        pin(b);
        return a.text == b.text;
    }
    return sameName(a.text, b.text)
        && std::ranges::equal(a.operands, b.operands,
                              [this](const ExpressionPtr &x, const ExpressionPtr &y) { return same(*x, *y); });
}

// ---- functions

Written ExpressionWriter::function(const Expression &expression)
{
    const auto is = [&](QStringView name) { return sameName(expression.text, name); };
    if (is(u"count") || is(u"min") || is(u"max"))
        return aggregate(expression);
    if (is(u"iif"))
        return choice(expression);
    if (is(u"format"))
        return format(expression);
    if (!is(u"ucase"))
        throw EngineError(EngineError::unknownFunction,
                          QStringLiteral("Undefined function '%1' in expression.").arg(expression.text));
    requireArguments(expression, 1);
    return {filled(m_language.upperCase, {asText(value(*expression.operands[0]))}), ValueKind::Text};
}

Written ExpressionWriter::aggregate(const Expression &expression)
{
    if (m_place != Place::Output)
        throw EngineError(EngineError::aggregateInCondition,
                          QStringLiteral("Cannot have aggregate function in expression (%1).").arg(expression.text));
    m_counts = true;
    const bool counts = sameName(expression.text, u"count");
    if (counts && expression.operands.size() == 1 && expression.operands[0]->kind == Expression::AllColumns)
        return {QStringLiteral("count(*)"), ValueKind::Long};
    requireArguments(expression, 1);
    m_place = Place::Counted;
    const Written each = value(*expression.operands[0]);
    m_place = Place::Output;
    if (counts)
        return {QLatin1String("count(") + each.sql + u')', ValueKind::Long};
    const bool least = sameName(expression.text, u"min");
    const char *const form = each.kind == ValueKind::Text ? (least ? m_language.leastText : m_language.greatestText)
        : least                                           ? "min(%1)"
                                                          : "max(%1)";
    return {filled(form, {each.sql}), each.kind};
}

Written ExpressionWriter::choice(const Expression &expression)
{
    requireArguments(expression, 3);
    const size_t before = parameters.size();
    const QString test = condition(*expression.operands[0]);
    Written yes = value(*expression.operands[1]), no = value(*expression.operands[2]);
    const ValueKind kind = yes.kind == no.kind || no.kind == ValueKind::Null ? yes.kind
        : yes.kind == ValueKind::Null                                        ? no.kind
        : isNumber(yes.kind) && isNumber(no.kind)                            ? ValueKind::Number
                                                                             : ValueKind::Text;
    // A choice between nothing and nothing would be a text down there.
    if (kind == ValueKind::Null) {
        parameters.resize(before);
        return yes;
    }
    for (Written *branch : {&yes, &no})
        if (m_language.isTyped && branch->kind != kind && branch->kind != ValueKind::Null)
            branch->sql = kind == ValueKind::Text ? asText(*branch) : filledFor(m_language.asNumber, *branch);
    const QString sql = QStringLiteral("CASE WHEN ") + test + QLatin1String(" THEN ") + yes.sql
        + QLatin1String(" ELSE ") + no.sql + QLatin1String(" END");
    return {sql, kind};
}

Written ExpressionWriter::format(const Expression &expression)
{
    requireArguments(expression, 2);
    const Expression &pattern = *expression.operands[1];
    pin(pattern);
    const Written formatted = value(*expression.operands[0]);
    if (pattern.kind == Expression::Text && sameName(pattern.text, u"short date"))
        return {filledFor(m_language.shortDate, formatted), ValueKind::Text};
    if (pattern.kind == Expression::Text && sameName(pattern.text, u"currency"))
        return {filled(m_language.currency, {filledFor(m_language.asNumber, formatted)}), ValueKind::Text};
    throw EngineError(EngineError::syntaxError,
                      QStringLiteral("Unknown format in query expression '%1()'.").arg(expression.text));
}

}
