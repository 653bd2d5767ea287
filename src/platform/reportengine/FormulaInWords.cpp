#include "platform/reportengine/FormulaInWords.h"

#include "platform/text/Format.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

// More of them would be a page of numbers.
constexpr size_t maxListed = 12;

constexpr std::pair<QLatin1StringView, QLatin1StringView> abbreviations[] = {
    {QLatin1StringView("Desc"), QLatin1StringView("Description")},
    {QLatin1StringView("Emp"), QLatin1StringView("Employee")},
    {QLatin1StringView("No"), QLatin1StringView("Number")},
    {QLatin1StringView("OH"), QLatin1StringView("Overhead")},
    {QLatin1StringView("Oper"), QLatin1StringView("Operation")},
    {QLatin1StringView("Per"), QLatin1StringView("Each")},
};

/// "Date Out" for DateOut; a number that only tells rows apart is not mentioned beside what it is the number of.
QString nameOf(const Field &field, const QString &table)
{
    static const QRegularExpression wordEnd(QStringLiteral("(?<=[a-z])(?=[A-Z])|_|\\s+"));
    const bool isForeign = field.table.compare(table, Qt::CaseInsensitive) != 0;
    QStringList words;
    for (QString word : ((isForeign ? field.table + ' ' : QString()) + field.column).split(wordEnd)) {
        const auto isAbbreviated = [&](const auto &known) {
            return word.compare(known.first, Qt::CaseInsensitive) == 0;
        };
        const auto known = std::find_if(std::begin(abbreviations), std::end(abbreviations), isAbbreviated);
        if (known != std::end(abbreviations))
            word = known->second;
        const bool isNumber = word.compare(QLatin1StringView("id"), Qt::CaseInsensitive) == 0;
        if (!word.isEmpty() && !isNumber && !words.contains(word, Qt::CaseInsensitive))
            words.append(word.left(1).toUpper() + word.mid(1));
    }
    return words.isEmpty() ? QStringLiteral("Number") : words.join(' ');
}

QString valueOf(const FormulaConstant &constant, FieldKind kind)
{
    if (constant.kind == FormulaConstant::Text)
        return '"' + constant.text + '"';
    if (constant.kind == FormulaConstant::Date)
        return constant.text;
    if (kind == FieldKind::YesNo)
        return constant.number != 0 ? QStringLiteral("yes") : QStringLiteral("no");
    return Format::plainNumber(constant.number);
}

QString listOf(const std::vector<FormulaConstant> &constants, FieldKind kind)
{
    if (constants.size() > maxListed)
        return QStringLiteral("one of %1 values").arg(QLocale::c().toString(qulonglong(constants.size())));
    QStringList values;
    for (const FormulaConstant &constant : constants)
        if (const QString value = valueOf(constant, kind); !values.contains(value))
            values.append(value);
    const QString last = values.takeLast();
    return values.isEmpty() ? last : values.join(QLatin1String(", ")) + QLatin1String(" or ") + last;
}

QString wordsFor(const FormulaCondition &condition, const FieldList &fields, const QString &table);

QString comparison(const FormulaCondition &condition, const FieldList &fields, const QString &table)
{
    const Field &field = fields.at(condition.field);
    const bool isDate = field.kind == FieldKind::DateTime;
    const auto value = [&](size_t number) { return valueOf(condition.constants[number], field.kind); };
    const auto sentence = [&](const char *verb) {
        return nameOf(field, table) + ' ' + QLatin1String(verb) + ' ' + value(0);
    };
    switch (condition.kind) {
    case FormulaCondition::NotEqual:
        return sentence("is not");
    case FormulaCondition::Less:
        return sentence(isDate ? "before" : "below");
    case FormulaCondition::LessOrEqual:
        return sentence("up to");
    case FormulaCondition::Greater:
        return sentence(isDate ? "after" : "above");
    case FormulaCondition::GreaterOrEqual:
        return sentence("from");
    case FormulaCondition::Range:
        return sentence("from") + QLatin1String(" to ") + value(1);
    default:
        return nameOf(field, table) + QLatin1String(" is ") + listOf(condition.constants, field.kind);
    }
}

QString joined(const FormulaCondition &condition, const char *conjunction, const FieldList &fields,
               const QString &table)
{
    QStringList parts;
    for (const FormulaCondition &part : condition.parts) {
        const QString words = wordsFor(part, fields, table);
        const bool isLoose = condition.kind == FormulaCondition::All && part.kind == FormulaCondition::Any;
        parts.append(isLoose ? '(' + words + ')' : words);
    }
    return parts.join(QLatin1String(conjunction));
}

QString wordsFor(const FormulaCondition &condition, const FieldList &fields, const QString &table)
{
    switch (condition.kind) {
    case FormulaCondition::All:
        return joined(condition, " and ", fields, table);
    case FormulaCondition::Any:
        return joined(condition, " or ", fields, table);
    default:
        return comparison(condition, fields, table);
    }
}

}

QString inWords(const Formula &formula, const FieldList &fields, const QString &table)
{
    return formula.isEmpty() ? QStringLiteral("All records") : wordsFor(formula.condition(), fields, table);
}
