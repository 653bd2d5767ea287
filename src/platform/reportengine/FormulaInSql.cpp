#include "platform/reportengine/FormulaInSql.h"

#include "platform/text/Format.h"

namespace {

// Of one statement; a longer list is looked at record by record.
constexpr int mostConstants = 500;

/// Empty where a statement has no way to say exactly that.
QString literal(const FormulaConstant &constant)
{
    switch (constant.kind) {
    case FormulaConstant::Text:
        return constant.text.contains(QChar::Null) ? QString()
                                                   : '\'' + QString(constant.text).replace('\'', "''") + '\'';
    case FormulaConstant::Number: {
        const QString number = Format::plainNumber(constant.number);
        return number.toDouble() == constant.number ? number : QString();
    }
    case FormulaConstant::Date:
        return '#' + constant.text + '#';
    }
    Q_UNREACHABLE();
}

class Writer
{
public:
    explicit Writer(const FieldList &fields) : m_fields(fields) { }

    QString condition(const FormulaCondition &condition)
    {
        switch (condition.kind) {
        case FormulaCondition::All:
            return joined(condition, " AND ");
        case FormulaCondition::Any:
            return joined(condition, " OR ");
        case FormulaCondition::Range:
            return comparison(condition, " BETWEEN ", " AND ");
        case FormulaCondition::OneOf:
            return comparison(condition, " IN (", ", ", ")");
        case FormulaCondition::Equal:
            return comparison(condition, " = ");
        case FormulaCondition::NotEqual:
            return comparison(condition, " <> ");
        case FormulaCondition::Less:
            return comparison(condition, " < ");
        case FormulaCondition::LessOrEqual:
            return comparison(condition, " <= ");
        case FormulaCondition::Greater:
            return comparison(condition, " > ");
        case FormulaCondition::GreaterOrEqual:
            return comparison(condition, " >= ");
        }
        Q_UNREACHABLE();
    }

private:
    // A part that cannot be told leaves "and" with the others, and "or" with nothing.
    QString joined(const FormulaCondition &condition, const QString &word)
    {
        QStringList parts;
        for (const FormulaCondition &part : condition.parts)
            parts.append(this->condition(part));
        if (condition.kind == FormulaCondition::Any && parts.contains(QString()))
            return {};
        parts.removeAll(QString());
        return parts.size() > 1 ? '(' + parts.join(word) + ')' : parts.value(0);
    }

    QString comparison(const FormulaCondition &condition, const QString &sign, const QString &between = {},
                       const QString &end = {})
    {
        m_constants += int(condition.constants.size());
        if (m_constants > mostConstants)
            return {};
        QStringList literals;
        for (const FormulaConstant &constant : condition.constants)
            literals.append(literal(constant));
        const Field &field = m_fields.at(condition.field);
        return literals.contains(QString()) || !field.isInStatement
            ? QString()
            : QStringLiteral("[%1].[%2]").arg(field.table, field.column) + sign + literals.join(between) + end;
    }

    const FieldList &m_fields;
    int m_constants = 0;
};

}

QString inSql(const Formula &formula, const FieldList &fields) { return Writer(fields).condition(formula.condition()); }
