#include "platform/engine/dialect/SqliteWriter.h"

#include "platform/engine/EngineError.h"

#include <QStringList>

#include <algorithm>

namespace dialect {
namespace {

// What is repeated in the written statement may not grow it without bounds.
constexpr qsizetype maximumRepeated = 100'000;
// The engine below takes no more arguments to a function.
constexpr size_t maximumArguments = 100;

const QString collate = QStringLiteral(" COLLATE ") + QLatin1String(names::collation);

QString quotedName(QString name) { return u'"' + name.replace(u'"', QLatin1String("\"\"")) + u'"'; }

QString quotedText(QString text) { return u'\'' + text.replace(u'\'', QLatin1String("''")) + u'\''; }

QString call(const char *function, const QStringList &arguments)
{
    return QLatin1String(function) + u'(' + arguments.join(QLatin1String(", ")) + u')';
}

bool isNumber(ValueKind kind)
{
    return kind == ValueKind::Long || kind == ValueKind::Number || kind == ValueKind::Currency
        || kind == ValueKind::YesNo;
}

/// An expression in the engine's language.
struct Written {
    QString sql;
    ValueKind kind = ValueKind::Unknown;
};

/// A table as a statement's FROM calls it.
struct NamedTable {
    QString name;
    const Table *table;
};

[[noreturn]] void typeMismatch()
{
    throw EngineError(EngineError::typeMismatch, QStringLiteral("Data type mismatch in criteria expression."));
}

[[noreturn]] void tooComplex() { throw EngineError(EngineError::tooComplex, QStringLiteral("Query is too complex.")); }

class Writer
{
public:
    Writer(const Schema &schema, Literals literals) : m_schema(schema), m_literals(literals) { }

    Translation translate(const Statement &statement)
    {
        m_out.kind = statement.kind;
        switch (statement.kind) {
        case Statement::SelectRows:
            writeSelect(*statement.select);
            break;
        case Statement::Insert:
            writeInsert(statement);
            break;
        case Statement::Update:
            writeUpdate(statement);
            break;
        case Statement::Delete:
            m_out.sql = QLatin1String("DELETE FROM ") + quotedName(target(statement).name);
            m_out.sql += where(statement.where);
            break;
        }
        refuseMissing();
        return std::move(m_out);
    }

    QString translateCondition(const Expression &expression, const std::vector<OutputColumn> &columns)
    {
        Table row{{}, {}, {}};
        QStringList values;
        for (const OutputColumn &column : columns) {
            row.columns.push_back({column.name, column.kind});
            const QString parameter = u'?' + QString::number(row.columns.size());
            // The cast lets the value compare as the column that it was read from would.
            values.append(
                (column.kind == ValueKind::Text ? QStringLiteral("CAST(%1 AS TEXT) AS %2") : QStringLiteral("%1 AS %2"))
                    .arg(parameter, quotedName(positionName(row.columns.size()))));
        }
        m_tables = {{{}, &row}};
        m_positional = true;
        const QString sql = condition(expression);
        refuseMissing();
        return QStringLiteral("SELECT %1 FROM (SELECT %2)").arg(sql, values.join(QLatin1String(", ")));
    }

private:
    // ---- tables and columns
    const Table &table(const QString &name) const
    {
        const Table *found = m_schema.find(name);
        if (!found)
            throw EngineError(
                EngineError::unknownTable,
                QStringLiteral("The database engine cannot find the input table or query '%1'. Make sure it "
                               "exists and that its name is spelled correctly.")
                    .arg(name));
        return *found;
    }
    const Table &target(const Statement &statement)
    {
        const Table &found = table(statement.table);
        m_out.table = found.name;
        m_tables = {{found.name, &found}};
        return found;
    }
    void collectTables(const Source &source)
    {
        if (!source.isTable()) {
            collectTables(*source.left);
            collectTables(*source.right);
            return;
        }
        const Table &found = table(source.table);
        m_tables.push_back({source.alias.isEmpty() ? found.name : source.alias, &found});
    }
    static QString positionName(size_t position) { return QStringLiteral("column") + QString::number(position); }

    /// Where a column was found: nowhere, once or several times.
    struct Found {
        int times = 0;
        const NamedTable *table = nullptr;
        int column = -1;
    };
    Found find(QStringView qualifier, QStringView name) const
    {
        Found found;
        for (const NamedTable &candidate : m_tables) {
            if (!qualifier.isEmpty() && !sameName(candidate.name, qualifier))
                continue;
            const int column = candidate.table->find(name);
            if (column >= 0)
                found = {found.times + 1, &candidate, column};
        }
        return found;
    }
    Found find(const Expression &column) const
    {
        const Found found = find(column.qualifier, column.text);
        const qsizetype point = column.text.indexOf(u'.');
        if (found.times > 0 || !column.bracketed || point < 0)
            return found;
        // [employee.lastname]
        return find(QStringView(column.text).first(point), QStringView(column.text).sliced(point + 1));
    }
    Written column(const NamedTable &table, int column) const
    {
        const Column &found = table.table->columns[column];
        if (m_positional)
            return {quotedName(positionName(column + 1)), found.kind};
        return {quotedName(table.name) + u'.' + quotedName(found.name), found.kind};
    }
    Written column(const Expression &expression)
    {
        const Found found = find(expression);
        if (found.times == 1)
            return column(*found.table, found.column);
        if (found.times > 1)
            throw EngineError(
                EngineError::ambiguousColumn,
                QStringLiteral("The specified field '%1' could refer to more than one table listed in the FROM "
                               "clause of your SQL statement.")
                    .arg(expression.text));
        // The engine takes an unknown name for a parameter, and says at the end how many it lacks.
        const QString name =
            expression.qualifier.isEmpty() ? expression.text : expression.qualifier + u'.' + expression.text;
        if (!m_missing.contains(name, Qt::CaseInsensitive))
            m_missing.append(name);
        return {QStringLiteral("NULL")};
    }
    void refuseMissing() const
    {
        if (!m_missing.isEmpty())
            throw EngineError(EngineError::unknownColumn,
                              QStringLiteral("Too few parameters. Expected %1.").arg(m_missing.size()));
    }

    // ---- SELECT
    QString where(const ExpressionPtr &expression)
    {
        return expression ? QLatin1String(" WHERE ") + condition(*expression) : QString();
    }
    QString from(const Source &source)
    {
        if (source.isTable())
            return quotedName(table(source.table).name)
                + (source.alias.isEmpty() ? QString() : QLatin1String(" AS ") + quotedName(source.alias));
        QString right = from(*source.right);
        if (!source.right->isTable())
            right = u'(' + right + u')';
        static const QLatin1String joins[] = {{},
                                              QLatin1String(", "),
                                              QLatin1String(" INNER JOIN "),
                                              QLatin1String(" LEFT JOIN "),
                                              QLatin1String(" RIGHT JOIN ")};
        QString sql = from(*source.left) + joins[source.join] + right;
        if (source.condition)
            sql += QLatin1String(" ON ") + condition(*source.condition);
        return sql;
    }

    /// One column of the rows that a SELECT gives.
    struct SelectedColumn {
        QString name;
        Written written; ///< at first only of a column that a star stands for
        const Expression *expression; ///< null for such a column
    };
    std::vector<SelectedColumn> selected(const Select &select)
    {
        std::vector<SelectedColumn> columns;
        int unnamed = 1000;
        for (const Output &output : select.outputs) {
            const Expression &value = *output.value;
            if (value.kind == Expression::AllColumns) {
                addAllColumns(columns, value.qualifier);
                continue;
            }
            QString name = output.alias;
            if (name.isEmpty() && value.kind == Expression::Column) {
                const Found found = find(value);
                name = found.times == 1 ? found.table->table->columns[found.column].name : value.text;
            } else if (name.isEmpty()) {
                name = QStringLiteral("Expr%1").arg(unnamed++);
            }
            columns.push_back({name, {}, &value});
        }
        return columns;
    }
    void addAllColumns(std::vector<SelectedColumn> &columns, const QString &qualifier) const
    {
        const size_t before = columns.size();
        for (const NamedTable &source : m_tables) {
            if (!qualifier.isEmpty() && !sameName(source.name, qualifier))
                continue;
            for (size_t i = 0; i < source.table->columns.size(); ++i)
                columns.push_back({source.table->columns[i].name, column(source, int(i)), nullptr});
        }
        if (columns.size() == before)
            throw EngineError(
                EngineError::unknownTable,
                QStringLiteral("The database engine cannot find the input table or query '%1'.").arg(qualifier));
    }
    void writeSelect(const Select &select)
    {
        collectTables(*select.from);
        std::vector<SelectedColumn> columns = selected(select);
        for (SelectedColumn &column : columns) {
            if (column.expression)
                column.written = value(*column.expression);
            m_out.columns.push_back({column.name, column.written.kind});
        }
        const bool textual = std::ranges::any_of(
            columns, [](const SelectedColumn &column) { return column.written.kind == ValueKind::Text; });
        m_out.sql = select.distinct && textual ? distinctTexts(select, columns) : plainSelect(select, columns);
    }
    QString plainSelect(const Select &select, const std::vector<SelectedColumn> &columns)
    {
        QStringList list;
        for (const SelectedColumn &column : columns)
            list.append(column.written.sql + QLatin1String(" AS ") + quotedName(column.name));
        const bool wholeTable = select.from->isTable() && !select.distinct && select.outputs.size() == 1
            && select.outputs.front().value->kind == Expression::AllColumns && m_tables.front().table->hasRowNumbers;
        if (wholeTable) {
            m_out.table = m_tables.front().table->name;
            list.append(quotedName(m_tables.front().name) + QLatin1String(".rowid"));
        }
        QString sql = (select.distinct ? QLatin1String("SELECT DISTINCT ") : QLatin1String("SELECT "))
            + list.join(QLatin1String(", ")) + QLatin1String(" FROM ") + from(*select.from) + where(select.where);
        QStringList keys;
        for (const OrderKey &key : select.order) {
            const int position = outputPosition(*key.value, columns);
            const Written written = position >= 0
                ? Written{QString::number(position + 1), columns[position].written.kind}
                : value(*key.value);
            if (select.distinct && position < 0)
                conflictsWithDistinct(*key.value);
            keys.append(orderKey(written, key.descending));
        }
        return sql + orderBy(keys);
    }
    // The case-blind comparison is dear, and a list of distinct texts has few of them: rows that are the same to the
    // byte go first, and only what is left is compared as texts are.
    QString distinctTexts(const Select &select, const std::vector<SelectedColumn> &columns)
    {
        QStringList inner, outer;
        for (size_t i = 0; i < columns.size(); ++i) {
            const QString name = quotedName(positionName(i + 1));
            inner.append(columns[i].written.sql + QLatin1String(" AS ") + name);
            outer.append(name + (columns[i].written.kind == ValueKind::Text ? collate : QString())
                         + QLatin1String(" AS ") + quotedName(columns[i].name));
        }
        const QString rows = QLatin1String("SELECT DISTINCT ") + inner.join(QLatin1String(", "))
            + QLatin1String(" FROM ") + from(*select.from) + where(select.where);
        QStringList keys;
        for (const OrderKey &key : select.order) {
            const int position = outputPosition(*key.value, columns);
            if (position < 0)
                conflictsWithDistinct(*key.value);
            keys.append(orderKey({QString::number(position + 1), columns[position].written.kind}, key.descending));
        }
        return QLatin1String("SELECT DISTINCT ") + outer.join(QLatin1String(", ")) + QLatin1String(" FROM (") + rows
            + u')' + orderBy(keys);
    }
    static QString orderKey(const Written &key, bool descending)
    {
        return key.sql + (key.kind == ValueKind::Text ? collate : QString())
            + (descending ? QLatin1String(" DESC") : QLatin1String());
    }
    static QString orderBy(const QStringList &keys)
    {
        return keys.isEmpty() ? QString() : QLatin1String(" ORDER BY ") + keys.join(QLatin1String(", "));
    }
    [[noreturn]] void conflictsWithDistinct(const Expression &key)
    {
        value(key); // an unknown name is the graver mistake
        refuseMissing();
        throw EngineError(EngineError::orderConflictsWithDistinct,
                          QStringLiteral("ORDER BY clause (%1) conflicts with DISTINCT.").arg(key.text));
    }
    /// Which of a SELECT's columns a sort key names, by its number, as the same expression or, where it is no column of
    /// the tables, by its name; -1 for none.
    int outputPosition(const Expression &key, const std::vector<SelectedColumn> &columns)
    {
        if (key.kind == Expression::Integer) {
            pin(key);
            const int number = key.negated ? 0 : key.text.toInt();
            return number >= 1 && number <= int(columns.size()) ? number - 1 : -1;
        }
        for (size_t i = 0; i < columns.size(); ++i)
            if (columns[i].expression && same(key, *columns[i].expression))
                return int(i);
        if (key.kind != Expression::Column)
            return -1;
        const Found found = find(key);
        if (found.times == 1) {
            const QString sql = column(*found.table, found.column).sql;
            const auto at =
                std::ranges::find_if(columns, [&](const SelectedColumn &c) { return c.written.sql == sql; });
            return at == columns.end() ? -1 : int(at - columns.begin());
        }
        const auto at = std::ranges::find_if(columns, [&](const SelectedColumn &column) {
            return key.qualifier.isEmpty() && sameName(column.name, key.text);
        });
        return at == columns.end() ? -1 : int(at - columns.begin());
    }
    bool same(const Expression &a, const Expression &b)
    {
        if (a.kind != b.kind || a.negated != b.negated || a.operands.size() != b.operands.size())
            return false;
        if (a.kind == Expression::Column) {
            const Found first = find(a), second = find(b);
            return first.times == 1 && second.times == 1 && first.table == second.table
                && first.column == second.column;
        }
        if (a.isLiteral()) {
            pin(a);
            pin(b);
            if (a.text != b.text)
                return false;
        } else if (!sameName(a.text, b.text)) {
            return false;
        }
        return std::ranges::equal(a.operands, b.operands,
                                  [this](const ExpressionPtr &x, const ExpressionPtr &y) { return same(*x, *y); });
    }

    // ---- INSERT and UPDATE
    QString stored(const Expression &expression, const Column &column)
    {
        if (expression.kind == Expression::Null)
            return column.kind == ValueKind::YesNo ? QStringLiteral("0") : QStringLiteral("NULL");
        if (expression.literal >= 0)
            return parameter({expression.literal, expression.negated, false, column.kind});
        return stored(value(expression), column);
    }
    static QString stored(const Written &written, const Column &column)
    {
        // What was read from a column of the same kind fits as it is; a yes/no may still be empty behind an outer join.
        const bool fits = written.kind == column.kind && column.kind != ValueKind::YesNo;
        return fits ? written.sql : call(names::stored, {written.sql, QString::number(int(column.kind))});
    }
    void noteReference(const Table &table, const Column &column, const QString &value)
    {
        for (const ForeignKey &key : table.foreignKeys)
            if (sameName(key.column, column.name))
                m_out.references.push_back({key, value});
    }
    void writeInsert(const Statement &statement)
    {
        const Table &table = target(statement);
        std::vector<const Column *> columns;
        for (const QString &name : statement.columns) {
            const int found = table.find(name);
            if (found < 0)
                throw EngineError(
                    EngineError::unknownField,
                    QStringLiteral("The INSERT INTO statement contains the following unknown field name: '%1'. "
                                   "Make sure you have typed the name correctly, and try the operation again.")
                        .arg(name));
            columns.push_back(&table.columns[found]);
        }
        if (statement.columns.empty())
            for (const Column &column : table.columns)
                columns.push_back(&column);
        QStringList columnNames;
        for (const Column *column : columns)
            columnNames.append(quotedName(column->name));
        m_tables.clear();
        const QString values = statement.select ? insertedRows(*statement.select, table, columns)
                                                : insertedValues(statement, table, columns);
        m_out.sql =
            QStringLiteral("INSERT INTO %1 (%2) ").arg(quotedName(table.name), columnNames.join(QLatin1String(", ")))
            + values;
    }
    static void requireAsMany(size_t values, size_t columns)
    {
        if (values != columns)
            throw EngineError(EngineError::valueCount,
                              QStringLiteral("Number of query values and destination fields are not the same."));
    }
    QString insertedValues(const Statement &statement, const Table &table, const std::vector<const Column *> &columns)
    {
        requireAsMany(statement.values.size(), columns.size());
        QStringList values;
        for (size_t i = 0; i < columns.size(); ++i) {
            values.append(stored(*statement.values[i], *columns[i]));
            noteReference(table, *columns[i], values.last());
        }
        return QLatin1String("VALUES (") + values.join(QLatin1String(", ")) + u')';
    }
    QString insertedRows(const Select &select, const Table &table, const std::vector<const Column *> &columns)
    {
        collectTables(*select.from);
        const std::vector<SelectedColumn> given = selected(select);
        requireAsMany(given.size(), columns.size());
        QStringList values;
        for (size_t i = 0; i < columns.size(); ++i) {
            const SelectedColumn &column = given[i];
            values.append(column.expression ? stored(*column.expression, *columns[i])
                                            : stored(column.written, *columns[i]));
            noteReference(table, *columns[i], values.last());
        }
        QString sql = (select.distinct ? QLatin1String("SELECT DISTINCT ") : QLatin1String("SELECT "))
            + values.join(QLatin1String(", ")) + QLatin1String(" FROM ") + from(*select.from) + where(select.where);
        QStringList keys;
        for (const OrderKey &key : select.order)
            keys.append(orderKey(value(*key.value), key.descending));
        return sql + orderBy(keys);
    }
    void writeUpdate(const Statement &statement)
    {
        const Table &table = target(statement);
        QStringList changes;
        for (size_t i = 0; i < statement.columns.size(); ++i) {
            const int found = table.find(statement.columns[i]);
            if (found < 0) {
                m_missing.append(statement.columns[i]);
                continue;
            }
            const Column &column = table.columns[found];
            const QString value = stored(*statement.values[i], column);
            noteReference(table, column, value);
            changes.append(quotedName(column.name) + QLatin1String(" = ") + value);
        }
        m_out.sql = QStringLiteral("UPDATE %1 SET ").arg(quotedName(table.name)) + changes.join(QLatin1String(", "))
            + where(statement.where);
    }

    // ---- literals
    QString parameter(const Parameter &parameter)
    {
        m_out.parameters.push_back(parameter);
        return u'?' + QString::number(m_out.parameters.size());
    }
    void pin(const Expression &literal)
    {
        if (literal.literal >= 0)
            m_out.pinned.push_back({literal.literal, literal.text});
    }
    Written literal(const Expression &expression, bool shortDate = false)
    {
        constexpr ValueKind kinds[] = {ValueKind::Long, ValueKind::Number, ValueKind::Text, ValueKind::Date};
        if (expression.kind == Expression::YesNo)
            return {expression.text, ValueKind::YesNo};
        const ValueKind kind = shortDate ? ValueKind::Text : kinds[expression.kind];
        if (m_literals == Literals::AsParameters)
            return {parameter({expression.literal, expression.negated, shortDate}), kind};
        if (kind == ValueKind::Text || kind == ValueKind::Date)
            return {quotedText(shortDate ? expression.text.left(10) : expression.text), kind};
        // Written as a fraction, a number of any length is read as one; "5." and ".5" are not numbers down there.
        QString number = expression.text;
        if (number.startsWith(u'.'))
            number.prepend(u'0');
        if (expression.kind == Expression::Fraction && !number.contains(u'.')
            && !number.contains(u'e', Qt::CaseInsensitive))
            number += QLatin1String(".0");
        return {expression.negated ? QLatin1String("(-") + number + u')' : number, kind};
    }

    // ---- conditions and values
    /// A condition gives 1, 0 or null.
    QString condition(const Expression &expression)
    {
        switch (expression.kind) {
        case Expression::And:
        case Expression::Or: {
            QStringList terms;
            for (const ExpressionPtr &operand : expression.operands)
                terms.append(condition(*operand));
            return balanced(expression.kind == Expression::And ? QLatin1String(" AND ") : QLatin1String(" OR "), terms,
                            0, terms.size());
        }
        case Expression::Not:
            return QLatin1String("(NOT ") + condition(*expression.operands[0]) + u')';
        case Expression::Comparison:
            return comparison(expression);
        case Expression::Like:
            return negated(expression,
                           call(names::like, {value(*expression.operands[0]).sql, value(*expression.operands[1]).sql}));
        case Expression::Between:
            return between(expression);
        case Expression::In:
            return in(expression);
        case Expression::IsNull:
            return u'(' + value(*expression.operands[0]).sql
                + (expression.negated ? QLatin1String(" IS NOT NULL)") : QLatin1String(" IS NULL)"));
        default: {
            const Written written = value(expression);
            if (written.kind == ValueKind::Text)
                typeMismatch();
            return u'(' + written.sql + QLatin1String(" <> 0)");
        }
        }
    }
    static QString negated(const Expression &expression, const QString &sql)
    {
        return expression.negated ? QLatin1String("(NOT ") + sql + u')' : sql;
    }
    // The engine below nests a plain chain as deep as it is long, and has a limit there.
    static QString balanced(QLatin1String separator, const QStringList &terms, qsizetype from, qsizetype to)
    {
        if (to - from == 1)
            return terms[from];
        const qsizetype middle = (from + to) / 2;
        return u'(' + balanced(separator, terms, from, middle) + separator + balanced(separator, terms, middle, to)
            + u')';
    }

    static bool isShortDate(const Expression &expression)
    {
        return expression.kind == Expression::Call && sameName(expression.text, u"format")
            && expression.operands.size() == 2 && expression.operands[1]->kind == Expression::Text
            && sameName(expression.operands[1]->text, u"short date");
    }
    // Beside the text of a short date a date literal is brought into the same form.
    std::vector<Written> comparedValues(const Expression &expression)
    {
        const bool shortDates = std::ranges::any_of(expression.operands,
                                                    [](const ExpressionPtr &operand) { return isShortDate(*operand); });
        std::vector<Written> values;
        for (const ExpressionPtr &operand : expression.operands) {
            const bool align = shortDates && operand->kind == Expression::Date;
            values.push_back(align ? literal(*operand, true) : value(*operand));
            requireComparable(expression, *operand, values);
        }
        return values;
    }
    // Columns of different kinds compare by value; a literal says which kind is meant.
    static void requireComparable(const Expression &comparison, const Expression &operand,
                                  const std::vector<Written> &values)
    {
        const auto differ = [](ValueKind text, ValueKind other) {
            return text == ValueKind::Text && (isNumber(other) || other == ValueKind::Date);
        };
        const ValueKind first = values.front().kind, last = values.back().kind;
        if ((operand.isLiteral() || comparison.operands[0]->isLiteral())
            && (differ(first, last) || differ(last, first)))
            typeMismatch();
    }
    static bool comparesTexts(const std::vector<Written> &values)
    {
        const auto fits = [](ValueKind kind) { return !isNumber(kind) && kind != ValueKind::Date; };
        return std::ranges::all_of(values, fits, &Written::kind)
            && std::ranges::any_of(
                   values, [](ValueKind kind) { return kind == ValueKind::Text; }, &Written::kind);
    }
    QString comparison(const Expression &expression)
    {
        const std::vector<Written> values = comparedValues(expression);
        return u'(' + values[0].sql + (comparesTexts(values) ? collate : QString()) + u' ' + expression.text + u' '
            + values[1].sql + u')';
    }
    QString between(const Expression &expression)
    {
        const std::vector<Written> values = comparedValues(expression);
        if (values[1].sql.size() + values[2].sql.size() > maximumRepeated)
            tooComplex();
        // The bounds may stand in either order.
        const QString collated = comparesTexts(values) ? collate : QString();
        const QStringList bounds = {values[1].sql + collated, values[2].sql};
        return negated(expression,
                       u'(' + values[0].sql + collated + QLatin1String(" BETWEEN ") + call("min", bounds)
                           + QLatin1String(" AND ") + call("max", bounds) + u')');
    }
    QString in(const Expression &expression)
    {
        const std::vector<Written> values = comparedValues(expression);
        QStringList list;
        for (size_t i = 1; i < values.size(); ++i)
            list.append(values[i].sql);
        return u'(' + values[0].sql + (comparesTexts(values) ? collate : QString())
            + (expression.negated ? QLatin1String(" NOT IN (") : QLatin1String(" IN ("))
            + list.join(QLatin1String(", ")) + QLatin1String("))");
    }

    /// A value; a condition among them is -1, 0 or null.
    Written value(const Expression &expression)
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
        case Expression::Negation: {
            const Written inner = number(*expression.operands[0]);
            return {QLatin1String("(-") + inner.sql + u')', inner.kind};
        }
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
    Written number(const Expression &expression)
    {
        Written written = value(expression);
        if (written.kind == ValueKind::Date || (written.kind == ValueKind::Text && expression.isLiteral()))
            typeMismatch();
        if (written.kind == ValueKind::Text)
            return {call(names::toNumber, {written.sql}), ValueKind::Number};
        return written;
    }
    Written arithmetic(const Expression &expression)
    {
        const QString left = number(*expression.operands[0]).sql, right = number(*expression.operands[1]).sql;
        if (expression.text == u"/")
            return {u'(' + left + QLatin1String(" * 1.0 / ") + right + u')', ValueKind::Number};
        return {u'(' + left + u' ' + expression.text + u' ' + right + u')', ValueKind::Number};
    }
    static QString concatenation(const QStringList &parts)
    {
        if (size_t(parts.size()) <= maximumArguments)
            return call(names::concatenate, parts);
        const qsizetype middle = parts.size() / 2;
        return call(names::concatenate, {concatenation(parts.first(middle)), concatenation(parts.sliced(middle))});
    }

    // ---- functions
    static void requireArguments(const Expression &call, size_t least, size_t most)
    {
        const size_t given = call.operands.size();
        const bool star = given > 0 && call.operands.front()->kind == Expression::AllColumns;
        if (given < least || given > most || star)
            throw EngineError(EngineError::syntaxError,
                              QStringLiteral("Wrong number of arguments used with function in query expression '%1()'.")
                                  .arg(call.text));
    }
    Written function(const Expression &expression)
    {
        if (sameName(expression.text, u"count"))
            return count(expression);
        if (sameName(expression.text, u"ucase")) {
            requireArguments(expression, 1, 1);
            return {call(names::upperCase, {value(*expression.operands[0]).sql}), ValueKind::Text};
        }
        if (sameName(expression.text, u"iif"))
            return choice(expression);
        if (sameName(expression.text, u"format"))
            return format(expression);
        throw EngineError(EngineError::unknownFunction,
                          QStringLiteral("Undefined function '%1' in expression.").arg(expression.text));
    }
    Written count(const Expression &expression)
    {
        if (expression.operands.size() == 1 && expression.operands[0]->kind == Expression::AllColumns)
            return {QStringLiteral("count(*)"), ValueKind::Long};
        requireArguments(expression, 1, 1);
        return {call("count", {value(*expression.operands[0]).sql}), ValueKind::Long};
    }
    Written choice(const Expression &expression)
    {
        requireArguments(expression, 3, 3);
        const QString test = condition(*expression.operands[0]);
        const Written yes = value(*expression.operands[1]), no = value(*expression.operands[2]);
        const ValueKind kind = yes.kind == no.kind || no.kind == ValueKind::Null ? yes.kind
            : yes.kind == ValueKind::Null                                        ? no.kind
            : isNumber(yes.kind) && isNumber(no.kind)                            ? ValueKind::Number
                                                                                 : ValueKind::Text;
        return {QStringLiteral("CASE WHEN ") + test + QLatin1String(" THEN ") + yes.sql + QLatin1String(" ELSE ")
                    + no.sql + QLatin1String(" END"),
                kind};
    }
    Written format(const Expression &expression)
    {
        requireArguments(expression, 2, 2);
        const Expression &pattern = *expression.operands[1];
        pin(pattern);
        const QString value = this->value(*expression.operands[0]).sql;
        if (pattern.kind == Expression::Text && sameName(pattern.text, u"short date"))
            return {call(names::shortDate, {value}), ValueKind::Text};
        if (pattern.kind == Expression::Text && sameName(pattern.text, u"currency"))
            return {call(names::currency, {value}), ValueKind::Text};
        throw EngineError(EngineError::syntaxError,
                          QStringLiteral("Unknown format in query expression '%1()'.").arg(expression.text));
    }

    const Schema &m_schema;
    Literals m_literals;
    std::vector<NamedTable> m_tables;
    QStringList m_missing;
    bool m_positional = false;
    Translation m_out;
};

}

Translation translate(const Statement &statement, const Schema &schema, Literals literals)
{
    return Writer(schema, literals).translate(statement);
}

QString translateCondition(const Expression &condition, const std::vector<OutputColumn> &columns)
{
    return Writer({}, Literals::Inline).translateCondition(condition, columns);
}

}
