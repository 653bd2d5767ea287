#include "platform/reportengine/Formula.h"

#include "platform/reportengine/FormulaParser.h"
#include "platform/reportengine/ResultCode.h"
#include "platform/text/Numbers.h"
#include "platform/text/TextCompare.h"

#include <algorithm>
#include <cmath>
#include <compare>

namespace {
// From there on several whole numbers share a fraction.
constexpr double largestExact = 9'007'199'254'740'992;

/// Of numbers, texts and days alike; unordered where the value is empty or cannot be read as the constant's kind.
std::partial_ordering compare(const Value &value, const FormulaConstant &constant)
{
    if (value.isNull())
        return std::partial_ordering::unordered;
    switch (constant.kind) {
    case FormulaConstant::Number: {
        const std::optional<double> number = value.isText() ? numberIn(value.toText()) : value.toNumber();
        return number ? *number <=> constant.number : std::partial_ordering::unordered;
    }
    case FormulaConstant::Text:
        return compareText(value.toText(), constant.text) <=> 0;
    case FormulaConstant::Date:
        return QStringView(value.toText()).left(constant.text.size()).compare(constant.text) <=> 0;
    }
    Q_UNREACHABLE();
}

bool precedes(const FormulaConstant &a, const FormulaConstant &b)
{
    return a.kind == FormulaConstant::Number ? a.number < b.number : compareText(a.text, b.text) < 0;
}

bool contains(const std::vector<FormulaConstant> &sorted, const Value &value)
{
    const auto before = [&](const FormulaConstant &constant, const Value &sought) {
        return compare(sought, constant) > 0;
    };
    const auto found = std::lower_bound(sorted.begin(), sorted.end(), value, before);
    return found != sorted.end() && compare(value, *found) == 0;
}

bool holds(const FormulaCondition &condition, const Value *record)
{
    const auto holdsHere = [record](const FormulaCondition &part) { return holds(part, record); };
    const auto order = [&](size_t constant = 0) {
        return compare(record[condition.field], condition.constants[constant]);
    };
    switch (condition.kind) {
    case FormulaCondition::All:
        return std::all_of(condition.parts.begin(), condition.parts.end(), holdsHere);
    case FormulaCondition::Any:
        return std::any_of(condition.parts.begin(), condition.parts.end(), holdsHere);
    case FormulaCondition::Equal:
        return order() == 0;
    case FormulaCondition::NotEqual:
        return order() < 0 || order() > 0;
    case FormulaCondition::Less:
        return order() < 0;
    case FormulaCondition::LessOrEqual:
        return order() <= 0;
    case FormulaCondition::Greater:
        return order() > 0;
    case FormulaCondition::GreaterOrEqual:
        return order() >= 0;
    case FormulaCondition::Range:
        return (order(0) >= 0 && order(1) <= 0) || (order(0) <= 0 && order(1) >= 0);
    case FormulaCondition::OneOf:
        return contains(condition.constants, record[condition.field]);
    }
    Q_UNREACHABLE();
}

void checkKind(const FormulaConstant &constant, const Field &field)
{
    bool fits = false;
    switch (field.kind) {
    case FieldKind::Text:
        fits = constant.kind != FormulaConstant::Date;
        break;
    case FieldKind::Number:
    case FieldKind::YesNo:
        fits = constant.kind == FormulaConstant::Number;
        break;
    case FieldKind::DateTime:
        fits = constant.kind == FormulaConstant::Date;
        break;
    }
    if (!fits)
        throw ReportError(ResultCode::errorInFormula,
                          QStringLiteral("{%1} is compared with a value of another kind").arg(field.name()));
}

void bindCondition(FormulaCondition &condition, const FieldList &fields)
{
    for (FormulaCondition &part : condition.parts)
        bindCondition(part, fields);
    for (const FormulaConstant &constant : condition.constants)
        checkKind(constant, fields.at(condition.field));
    if (condition.kind == FormulaCondition::Range && condition.constants[0].kind != condition.constants[1].kind)
        throw ReportError(ResultCode::errorInFormula,
                          QStringLiteral("the ends of {%1} are of two kinds").arg(fields.at(condition.field).name()));
    if (condition.kind == FormulaCondition::OneOf)
        std::sort(condition.constants.begin(), condition.constants.end(), precedes);
}
}

Formula Formula::parse(const QString &text, FieldList &fields, int line)
{
    Formula formula;
    formula.m_root = FormulaParser(text, fields, line).parse();
    formula.m_line = line;
    return formula;
}

void Formula::bind(const FieldList &fields) { bindCondition(m_root, fields); }

std::optional<std::vector<double>> Formula::numbersOf(int field) const
{
    const bool isList = m_root.kind == FormulaCondition::Equal || m_root.kind == FormulaCondition::OneOf;
    if (!isList || m_root.field != field || m_root.constants.front().kind != FormulaConstant::Number)
        return {};
    std::vector<double> numbers;
    for (const FormulaConstant &constant : m_root.constants)
        numbers.push_back(constant.number);
    // A number named twice is still one record; bind() has sorted them.
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    if (std::abs(numbers.front()) > largestExact || std::abs(numbers.back()) > largestExact)
        return {};
    return numbers;
}

bool Formula::matches(const Value *record) const { return holds(m_root, record); }
