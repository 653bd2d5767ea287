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
// The engine below takes no more arguments to a function.
constexpr qsizetype maximumArguments = 100;

const QString collate = QStringLiteral(" COLLATE ") + QLatin1String(names::collation);

QString call(const char *function, const QStringList &arguments)
{
    return QLatin1String(function) + u'(' + arguments.join(QLatin1String(", ")) + u')';
}

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

QString concatenation(const QStringList &parts)
{
    if (parts.size() <= maximumArguments)
        return call(names::concatenate, parts);
    const qsizetype middle = parts.size() / 2;
    return call(names::concatenate, {concatenation(parts.first(middle)), concatenation(parts.sliced(middle))});
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

QString ExpressionWriter::parameter(const Parameter &parameter)
{
    parameters.push_back(parameter);
    return u'?' + QString::number(parameters.size());
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
    return {m_literals == Literals::Inline ? inlineLiteral(expression, use) : parameter(use), kind};
}

QString ExpressionWriter::inlineLiteral(const Expression &expression, const Parameter &use) const
{
    if (expression.kind == Expression::Date)
        return quotedText(use.shortDate ? Format::shortDate(expression.text) : expression.text);
    if (expression.kind == Expression::Text && use.storedAs == ValueKind::Unknown)
        return quotedText(expression.text);
    if (expression.kind == Expression::Text)
        return call(names::stored, {quotedText(expression.text), QString::number(int(use.storedAs))});
    // A whole number of any length stays a fraction; without a point the engine below would take it for an integer.
    QString number = expression.text;
    if (expression.kind == Expression::Fraction && !number.contains(u'.')
        && !number.contains(u'e', Qt::CaseInsensitive))
        number += QLatin1String(".0");
    return expression.negated ? QLatin1String("(-") + number + u')' : number;
}

QString ExpressionWriter::stored(const Expression &expression, const Column &column)
{
    if (expression.kind == Expression::Null)
        return column.kind == ValueKind::YesNo ? QStringLiteral("0") : QStringLiteral("NULL");
    if (expression.literal >= 0)
        return parameter({expression.literal, expression.negated, false, column.kind});
    return stored(value(expression), column);
}

QString ExpressionWriter::stored(const Written &written, const Column &column)
{
    // What was read from a column of the same kind fits as it is, but for a yes/no that is empty behind an outer join.
    const bool fits = written.kind == column.kind && column.kind != ValueKind::YesNo;
    return fits ? written.sql : call(names::stored, {written.sql, QString::number(int(column.kind))});
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
    case Expression::Like: {
        const QString text = value(*expression.operands[0]).sql, pattern = value(*expression.operands[1]).sql;
        return negatedIf(expression.negated, call(names::like, {text, pattern}));
    }
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

QString ExpressionWriter::taken(const Written &value, Way way)
{
    if (way == Way::ByNumber && value.kind == ValueKind::Text)
        return call(names::number, {value.sql});
    if (way == Way::ByDay && !value.isDay)
        return QStringLiteral("substr(%1, 1, %2)").arg(value.sql).arg(Format::shortDateLength);
    return value.sql;
}

QString ExpressionWriter::collated(const Written &text)
{
    return text.kind == ValueKind::Text ? text.sql + collate : text.sql;
}

QString ExpressionWriter::comparison(const Expression &expression)
{
    const std::vector<Written> values = comparedValues(expression);
    // The engine below compares two columns by value itself, and finds the partners of a join by an index then.
    const auto isColumn = [](const ExpressionPtr &operand) { return operand->kind == Expression::Column; };
    const bool joins = expression.text == u"=" && std::ranges::all_of(expression.operands, isColumn);
    const Way way = joins ? Way::AsStored : wayBetween(values[0], values[1]);
    return u'(' + taken(values[0], way) + (comparesTexts(values) ? collate : QString()) + u' ' + expression.text + u' '
        + taken(values[1], way) + u')';
}

QString ExpressionWriter::between(const Expression &expression)
{
    const std::vector<Written> values = comparedValues(expression);
    if (values[0].sql.size() + values[1].sql.size() + values[2].sql.size() > maximumRepeated)
        throw EngineError::of(EngineError::tooComplex);
    const Way way = std::max(
        {wayBetween(values[0], values[1]), wayBetween(values[0], values[2]), wayBetween(values[1], values[2])});
    // The bounds may stand in either order.
    const QString collation = comparesTexts(values) ? collate : QString();
    const Way ofBounds = way == Way::ByDay ? Way::AsStored : way;
    const QStringList bounds = {taken(values[1], ofBounds) + collation, taken(values[2], ofBounds)};
    const QString lower = call("min", bounds), upper = call("max", bounds);
    // A day as a bound is the ten characters in which a date and time begins.
    const auto upTo = [&](const QString &bound) {
        return QStringLiteral("substr(%1, 1, length(%2))").arg(values[0].sql, bound);
    };
    const QString test = way == Way::ByDay
        ? upTo(lower) + QLatin1String(" >= ") + lower + QLatin1String(" AND ") + upTo(upper) + QLatin1String(" <= ")
            + upper
        : taken(values[0], way) + collation + QLatin1String(" BETWEEN ") + lower + QLatin1String(" AND ") + upper;
    return negatedIf(expression.negated, u'(' + test + u')');
}

QString ExpressionWriter::in(const Expression &expression)
{
    const std::vector<Written> values = comparedValues(expression);
    std::map<Way, std::vector<Written>> lists;
    for (size_t i = 1; i < values.size(); ++i)
        lists[wayBetween(values[0], values[i])].push_back(values[i]);
    QStringList tests;
    for (auto &[way, list] : lists) {
        QStringList members;
        for (const Written &member : list)
            members.append(taken(member, way));
        list.push_back(values[0]);
        tests.append(taken(values[0], way) + (comparesTexts(list) ? collate : QString()) + QLatin1String(" IN (")
                     + members.join(QLatin1String(", ")) + u')');
    }
    return negatedIf(expression.negated, u'(' + tests.join(QLatin1String(" OR ")) + u')');
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
            parts.append(value(*operand).sql);
        return {concatenation(parts), ValueKind::Text};
    }
    case Expression::Call:
        return function(expression);
    case Expression::AllColumns:
        throw EngineError(EngineError::syntaxError, QStringLiteral("Syntax error in query expression '*'."));
    default:
        return {QLatin1String("(-") + condition(expression) + u')', ValueKind::YesNo};
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
    if (written.kind == ValueKind::Text)
        return {call(names::stored, {written.sql, QString::number(int(ValueKind::Number))}), ValueKind::Number};
    return written;
}

Written ExpressionWriter::arithmetic(const Expression &expression)
{
    const QString left = number(*expression.operands[0]).sql, right = number(*expression.operands[1]).sql;
    const QString sign = expression.text == u"/" ? QStringLiteral("* 1.0 /") : expression.text;
    return {u'(' + left + u' ' + sign + u' ' + right + u')', ValueKind::Number};
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
    if (sameName(expression.text, u"count"))
        return count(expression);
    if (sameName(expression.text, u"iif"))
        return choice(expression);
    if (sameName(expression.text, u"format"))
        return format(expression);
    if (!sameName(expression.text, u"ucase"))
        throw EngineError(EngineError::unknownFunction,
                          QStringLiteral("Undefined function '%1' in expression.").arg(expression.text));
    requireArguments(expression, 1);
    return {call(names::upperCase, {value(*expression.operands[0]).sql}), ValueKind::Text};
}

Written ExpressionWriter::count(const Expression &expression)
{
    if (m_place != Place::Output)
        throw EngineError(EngineError::aggregateInCondition,
                          QStringLiteral("Cannot have aggregate function in expression (%1).").arg(expression.text));
    m_counts = true;
    if (expression.operands.size() == 1 && expression.operands[0]->kind == Expression::AllColumns)
        return {QStringLiteral("count(*)"), ValueKind::Long};
    requireArguments(expression, 1);
    m_place = Place::Counted;
    const QString counted = value(*expression.operands[0]).sql;
    m_place = Place::Output;
    return {call("count", {counted}), ValueKind::Long};
}

Written ExpressionWriter::choice(const Expression &expression)
{
    requireArguments(expression, 3);
    const QString test = condition(*expression.operands[0]);
    const Written yes = value(*expression.operands[1]), no = value(*expression.operands[2]);
    const ValueKind kind = yes.kind == no.kind || no.kind == ValueKind::Null ? yes.kind
        : yes.kind == ValueKind::Null                                        ? no.kind
        : isNumber(yes.kind) && isNumber(no.kind)                            ? ValueKind::Number
                                                                             : ValueKind::Text;
    const QString sql = QStringLiteral("CASE WHEN ") + test + QLatin1String(" THEN ") + yes.sql
        + QLatin1String(" ELSE ") + no.sql + QLatin1String(" END");
    return {sql, kind};
}

Written ExpressionWriter::format(const Expression &expression)
{
    requireArguments(expression, 2);
    const Expression &pattern = *expression.operands[1];
    pin(pattern);
    const QString formatted = value(*expression.operands[0]).sql;
    if (pattern.kind == Expression::Text && sameName(pattern.text, u"short date"))
        return {call(names::shortDate, {formatted}), ValueKind::Text};
    if (pattern.kind == Expression::Text && sameName(pattern.text, u"currency"))
        return {call(names::currency, {formatted}), ValueKind::Text};
    throw EngineError(EngineError::syntaxError,
                      QStringLiteral("Unknown format in query expression '%1()'.").arg(expression.text));
}

}
