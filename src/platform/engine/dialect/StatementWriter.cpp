#include "platform/engine/dialect/StatementWriter.h"

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/ExpressionWriter.h"
#include "platform/engine/dialect/SqlText.h"

#include <algorithm>
#include <map>
#include <set>

namespace dialect {
namespace {

QString listed(const QStringList &parts) { return parts.join(QLatin1String(", ")); }

QLatin1String selectWord(const Select &select)
{
    return QLatin1String(select.distinct ? "SELECT DISTINCT " : "SELECT ");
}

/// One column of the rows that a SELECT gives.
struct SelectedColumn {
    QString name;
    const Expression *expression; ///< null for a column that a star stands for
    Written written;
};

template<typename Visit>
void forEachColumn(const Expression &expression, Visit visit)
{
    if (expression.kind == Expression::Column)
        visit(expression);
    for (const ExpressionPtr &operand : expression.operands)
        forEachColumn(*operand, visit);
}

template<typename Visit>
void forEachCondition(const Source &source, Visit visit)
{
    if (source.isTable())
        return;
    forEachCondition(*source.left, visit);
    forEachCondition(*source.right, visit);
    if (source.condition)
        visit(*source.condition);
}

class StatementWriter
{
public:
    StatementWriter(const Schema &schema, Literals literals, const Language &language)
        : m_schema(schema), m_language(language), m_expressions(literals, language)
    {
    }

    Translation write(const Statement &statement)
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
            m_out.table = table(statement.table).name;
            m_expressions.addTable({m_out.table, &table(statement.table)});
            m_out.sql = QLatin1String("DELETE FROM ") + quotedName(m_out.table) + where(statement.where);
            break;
        }
        m_expressions.refuseMissing();
        m_out.parameters = std::move(m_expressions.parameters);
        m_out.pinned = std::move(m_expressions.pinned);
        return std::move(m_out);
    }

private:
    const Table &table(const QString &name) const { return m_schema.table(name); }

    // ---- SELECT
    void addTables(const Source &source)
    {
        if (!source.isTable()) {
            addTables(*source.left);
            addTables(*source.right);
            return;
        }
        const Table &found = table(source.table);
        m_expressions.addTable({source.alias.isEmpty() ? found.name : source.alias, &found});
    }
    /// `next` counts the tables, in the order in which addTables() met them.
    QString from(const Source &source, size_t &next)
    {
        if (source.isTable()) {
            ++next;
            return tableOrItsColumns(source);
        }
        static constexpr const char *joins[] = {"", "", " INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN "};
        const char *const join = source.condition ? joins[source.join] : m_language.crossJoin;
        const size_t first = next;
        const QString left = from(*source.left, next);
        const QString right = from(*source.right, next);
        QString sql = left + QLatin1String(join) + (source.right->isTable() ? right : u'(' + right + u')');
        if (source.condition)
            sql += QLatin1String(" ON ") + m_expressions.joinCondition(*source.condition, first, next);
        return sql;
    }
    QString tableOrItsColumns(const Source &source) const
    {
        const QString table = quotedName(this->table(source.table).name);
        const QString name = source.alias.isEmpty() ? table : quotedName(source.alias);
        if (const auto narrowed = m_narrowed.find(name); narrowed != m_narrowed.end())
            return QStringLiteral("(SELECT DISTINCT %1 FROM %2) AS %3").arg(listed(narrowed->second), table, name);
        return source.alias.isEmpty() ? table : table + QLatin1String(" AS ") + name;
    }
    QString where(const ExpressionPtr &condition)
    {
        return condition ? QLatin1String(" WHERE ") + m_expressions.condition(*condition) : QString();
    }
    QString fromWhere(const Select &select)
    {
        size_t tables = 0;
        const QString sources = from(*select.from, tables);
        return QLatin1String(" FROM ") + sources + where(select.where);
    }

    std::vector<SelectedColumn> selected(const Select &select)
    {
        std::vector<SelectedColumn> columns;
        int unnamed = 1000;
        for (const Output &output : select.outputs) {
            const Expression &value = *output.value;
            if (value.kind == Expression::AllColumns) {
                m_expressions.addAllColumns();
                addAllColumns(columns, value.qualifier);
                continue;
            }
            QString name = output.alias;
            if (name.isEmpty() && value.kind == Expression::Column) {
                const FoundColumn found = m_expressions.find(value);
                name = found.times == 1 ? (*found).name : value.text;
            } else if (name.isEmpty()) {
                name = QStringLiteral("Expr%1").arg(unnamed++);
            }
            columns.push_back({name, &value, {}});
        }
        return columns;
    }
    void addAllColumns(std::vector<SelectedColumn> &columns, const QString &qualifier) const
    {
        const size_t before = columns.size();
        for (const NamedTable &source : m_expressions.tables()) {
            if (!qualifier.isEmpty() && !sameName(source.name, qualifier))
                continue;
            for (size_t i = 0; i < source.table->columns.size(); ++i)
                columns.push_back({source.table->columns[i].name, nullptr, ExpressionWriter::column(source, int(i))});
        }
        if (columns.size() == before)
            throw EngineError(
                EngineError::unknownTable,
                QStringLiteral("The database engine cannot find the input table or query '%1'.").arg(qualifier));
    }

    void writeSelect(const Select &select)
    {
        addTables(*select.from);
        std::vector<SelectedColumn> columns = selected(select);
        for (SelectedColumn &column : columns) {
            if (column.expression)
                column.written = m_expressions.output(*column.expression);
            m_out.columns.push_back({column.name, column.written.kind});
        }
        m_expressions.refuseMixedCount();
        const bool texts = std::ranges::any_of(
            columns, [](const SelectedColumn &column) { return column.written.kind == ValueKind::Text; });
        if (select.distinct && !m_expressions.counts())
            narrowHiddenTables(select);
        if (select.distinct && texts)
            m_out.sql = distinctTexts(select, columns);
        else
            writePlainSelect(select, columns);
    }
    void writePlainSelect(const Select &select, const std::vector<SelectedColumn> &columns)
    {
        QStringList list;
        for (const SelectedColumn &column : columns)
            list.append(column.written.sql + QLatin1String(" AS ") + quotedName(column.name));
        const NamedTable &first = m_expressions.tables().front();
        const bool wholeTable = select.from->isTable() && !select.distinct && select.outputs.size() == 1
            && select.outputs.front().value->kind == Expression::AllColumns && !first.table->rowNumber.isEmpty();
        if (wholeTable) {
            m_out.table = first.table->name;
            list.append(rowNumber(first));
        }
        m_out.sql = selectWord(select) + listed(list) + fromWhere(select);
        m_out.sql += orderBy(select, columns);
    }
    // A table that a list of distinct rows does not show, such as the loans behind a list of employees, only decides
    // which rows are in the list. Rows of it that are alike decide alike, so that one of each is enough to join with. A
    // table whose rows an index finds is quick enough as it is.
    void narrowHiddenTables(const Select &select)
    {
        const std::vector<NamedTable> &tables = m_expressions.tables();
        std::vector<std::set<int>> used(tables.size());
        std::set<size_t> kept;
        const auto note = [&](const Expression &expression, bool shown) {
            forEachColumn(expression, [&](const Expression &column) {
                const FoundColumn found = m_expressions.find(column);
                if (found.times != 1)
                    return;
                const size_t table = found.table - tables.data();
                used[table].insert(found.column);
                if (shown || (*found).indexed)
                    kept.insert(table);
            });
        };
        for (const Output &output : select.outputs) {
            if (output.value->kind == Expression::AllColumns)
                return;
            note(*output.value, true);
        }
        forEachCondition(*select.from, [&](const Expression &condition) { note(condition, false); });
        if (select.where)
            note(*select.where, false);
        for (size_t i = 0; i < tables.size(); ++i) {
            QStringList columns;
            for (const int column : used[i])
                columns.append(quotedName(tables[i].table->columns[column].name));
            if (!kept.contains(i) && !columns.isEmpty())
                m_narrowed.emplace(quotedName(tables[i].name), columns);
        }
    }
    // Comparing texts without regard to case is slow. Rows that are the same to the byte are dropped first, quickly;
    // only the few that are left are compared as texts: by the engine's own comparison, or grouped by each text's key,
    // of which the least text is shown.
    QString distinctTexts(const Select &select, const std::vector<SelectedColumn> &columns)
    {
        QStringList inner, outer, groups;
        std::vector<SelectedColumn> grouped = columns;
        for (size_t i = 0; i < columns.size(); ++i) {
            Written &column = grouped[i].written;
            inner.append(column.sql + QLatin1String(" AS ") + quotedName(ExpressionWriter::positionName(i + 1)));
            column.sql = quotedName(ExpressionWriter::positionName(i + 1));
            groups.append(m_expressions.key(column));
            const bool isText = column.kind == ValueKind::Text;
            const QString shown = m_language.comparesTexts ? groups.last()
                : isText                                   ? filled(m_language.leastOfEqualTexts, {column.sql})
                                                           : column.sql;
            outer.append(shown + QLatin1String(" AS ") + quotedName(columns[i].name));
        }
        const QString rows =
            QLatin1String(" FROM (") + selectWord(select) + listed(inner) + fromWhere(select) + QLatin1String(") AS r");
        if (m_language.comparesTexts)
            return selectWord(select) + listed(outer) + rows + orderBy(select, columns);
        return QLatin1String("SELECT ") + listed(outer) + rows + QLatin1String(" GROUP BY ") + listed(groups)
            + orderBy(select, columns, grouped);
    }

    // ---- ORDER BY
    static QString rowNumber(const NamedTable &table)
    {
        return quotedName(table.name) + u'.' + quotedName(table.table->rowNumber);
    }
    // A constant orders nothing; down there a number would be taken for a column's place.
    static bool isConstant(const SelectedColumn &column)
    {
        return (column.expression && column.expression->isLiteral()) || column.written.kind == ValueKind::Null;
    }
    QString orderBy(const Select &select, const std::vector<SelectedColumn> &columns)
    {
        return orderBy(select, columns, columns);
    }
    /// `sorted` has what stands for each of `columns` where the rows are sorted.
    QString orderBy(const Select &select, const std::vector<SelectedColumn> &columns,
                    const std::vector<SelectedColumn> &sorted)
    {
        QStringList keys;
        for (const OrderKey &key : select.order) {
            const int position = outputPosition(*key.value, columns);
            if (position < 0 && key.value->isLiteral())
                continue;
            if (position < 0 && select.distinct)
                refuseDistinctOrder(*key.value);
            const Written written = position < 0 ? m_expressions.value(*key.value)
                : m_language.isTyped             ? sorted[position].written
                                     : Written{QString::number(position + 1), columns[position].written.kind};
            if (position < 0 ? written.kind == ValueKind::Null : isConstant(columns[position]))
                continue;
            keys.append(m_expressions.key(written)
                        + QLatin1String(key.descending ? m_language.descending : m_language.ascending));
        }
        if (m_language.isTyped && !m_expressions.counts())
            keys += remainingOrder(select, keys, sorted);
        return keys.isEmpty() ? QString() : QLatin1String(" ORDER BY ") + listed(keys);
    }
    // Such an engine moves a row that changes, and a list must not jump: what nothing else sorts comes in the order in
    // which it was entered, and distinct rows by their columns.
    QStringList remainingOrder(const Select &select, const QStringList &keys,
                               const std::vector<SelectedColumn> &sorted) const
    {
        const NamedTable &first = m_expressions.tables().front();
        if (!select.distinct)
            return first.table->rowNumber.isEmpty() ? QStringList() : QStringList(rowNumber(first));
        QStringList all;
        if (keys.isEmpty())
            for (const SelectedColumn &column : sorted)
                if (!isConstant(column))
                    all.append(m_expressions.key(column.written) + QLatin1String(m_language.ascending));
        return all;
    }
    [[noreturn]] void refuseDistinctOrder(const Expression &key)
    {
        m_expressions.value(key); // an unknown name is the graver mistake
        m_expressions.refuseMissing();
        throw EngineError(EngineError::orderConflictsWithDistinct,
                          QStringLiteral("ORDER BY clause (%1) conflicts with DISTINCT.")
                              .arg(key.text.isEmpty() ? QStringLiteral("<expression>") : key.text));
    }
    /// Which of a SELECT's columns a sort key names: by its number, as the same expression or, where no table has a
    /// column of the name, by its name; -1 for none.
    int outputPosition(const Expression &key, const std::vector<SelectedColumn> &columns)
    {
        if (key.kind == Expression::Integer) {
            m_expressions.pin(key);
            const int number = key.negated ? 0 : key.text.toInt();
            return number >= 1 && number <= int(columns.size()) ? number - 1 : -1;
        }
        const FoundColumn found = key.kind == Expression::Column ? m_expressions.find(key) : FoundColumn{};
        const QString sql = found.times == 1 ? ExpressionWriter::column(*found.table, found.column).sql : QString();
        const bool mayBeName = key.kind == Expression::Column && key.qualifier.isEmpty() && found.times != 1;
        const auto names = [&](const SelectedColumn &column) {
            if (found.times == 1)
                return column.written.sql == sql;
            if (mayBeName)
                return sameName(column.name, key.text);
            return column.expression && m_expressions.same(key, *column.expression);
        };
        const auto at = std::ranges::find_if(columns, names);
        return at == columns.end() ? -1 : int(at - columns.begin());
    }

    // ---- INSERT and UPDATE
    void noteReference(const Table &table, const Column &column, const QString &value)
    {
        for (const ForeignKey &key : table.foreignKeys)
            if (sameName(key.column, column.name))
                m_out.references.push_back({key, value});
    }
    static void addOnce(std::vector<const Column *> &columns, const Column &column)
    {
        if (std::ranges::find(columns, &column) != columns.end())
            throw EngineError(EngineError::duplicateDestination,
                              QStringLiteral("Duplicate output destination '%1'.").arg(column.name));
        columns.push_back(&column);
    }
    static std::vector<const Column *> destinations(const Statement &statement, const Table &table)
    {
        std::vector<const Column *> columns;
        for (const QString &name : statement.columns) {
            const int found = table.find(name);
            if (found < 0)
                throw EngineError(
                    EngineError::unknownField,
                    QStringLiteral("The INSERT INTO statement contains the following unknown field name: '%1'. "
                                   "Make sure you have typed the name correctly, and try the operation again.")
                        .arg(name));
            addOnce(columns, table.columns[found]);
        }
        if (statement.columns.empty())
            for (const Column &column : table.columns)
                columns.push_back(&column);
        return columns;
    }
    void writeInsert(const Statement &statement)
    {
        const Table &table = this->table(statement.table);
        m_out.table = table.name;
        const std::vector<const Column *> columns = destinations(statement, table);
        std::vector<SelectedColumn> given;
        if (statement.select) {
            addTables(*statement.select->from);
            given = selected(*statement.select);
        }
        for (const ExpressionPtr &value : statement.values)
            given.push_back({{}, value.get(), {}});
        if (given.size() != columns.size())
            throw EngineError(EngineError::valueCount,
                              QStringLiteral("Number of query values and destination fields are not the same."));
        QStringList names, values;
        for (size_t i = 0; i < columns.size(); ++i) {
            names.append(quotedName(columns[i]->name));
            values.append(inserted(given[i], *columns[i], statement.select.get()));
            noteReference(table, *columns[i], values.last());
        }
        m_expressions.refuseMixedCount();
        m_out.sql = QStringLiteral("INSERT INTO %1 (%2) ").arg(quotedName(table.name), listed(names));
        if (statement.select && statement.select->distinct && !m_language.comparesTexts) {
            for (size_t i = 0; i < given.size(); ++i)
                given[i].written = {values[i], columns[i]->kind};
            m_out.sql += distinctTexts(*statement.select, given);
        } else if (statement.select) {
            m_out.sql += selectWord(*statement.select) + listed(values) + fromWhere(*statement.select);
            m_out.sql += orderBy(*statement.select, given);
        } else {
            m_out.sql += QLatin1String("VALUES (") + listed(values) + u')';
        }
    }
    QString inserted(SelectedColumn &given, const Column &column, const Select *select)
    {
        const Expression *expression = given.expression;
        const bool constant = expression && (expression->literal >= 0 || expression->kind == Expression::Null);
        if (constant || !select)
            return m_expressions.stored(*expression, column);
        if (expression)
            given.written = m_expressions.output(*expression);
        const QString value = m_expressions.stored(given.written, column);
        return select->distinct && m_language.comparesTexts ? m_expressions.key({value, column.kind}) : value;
    }
    void writeUpdate(const Statement &statement)
    {
        const Table &table = this->table(statement.table);
        m_out.table = table.name;
        m_expressions.addTable({table.name, &table});
        std::vector<const Column *> columns;
        QStringList changes;
        for (size_t i = 0; i < statement.columns.size(); ++i) {
            const int found = table.find(statement.columns[i]);
            if (found < 0) {
                m_expressions.addMissing(statement.columns[i]);
                continue;
            }
            const Column &column = table.columns[found];
            addOnce(columns, column);
            const QString value = m_expressions.stored(*statement.values[i], column);
            noteReference(table, column, value);
            changes.append(quotedName(column.name) + QLatin1String(" = ") + value);
        }
        m_out.sql = QLatin1String("UPDATE ") + quotedName(table.name) + QLatin1String(" SET ") + listed(changes)
            + where(statement.where);
    }

    const Schema &m_schema;
    const Language &m_language;
    ExpressionWriter m_expressions;
    std::map<QString, QStringList> m_narrowed; ///< tables that are read for these columns' distinct values only
    Translation m_out;
};

}

Translation translate(const Statement &statement, const Schema &schema, Literals literals, const Language &language)
{
    return StatementWriter(schema, literals, language).write(statement);
}

std::optional<Translation> translateForAll(Statement statement, const Schema &schema, const Language &language)
{
    Select &select = *statement.select;
    const Expression *condition = select.where.get();
    if (!condition || condition->kind != Expression::Comparison || condition->text != u"=" || select.distinct
        || condition->operands[0]->kind != Expression::Column || condition->operands[1]->kind != Expression::Integer)
        return {};
    const ExpressionPtr where = std::move(select.where);
    const auto column = [&] {
        auto copy = std::make_unique<Expression>();
        copy->kind = Expression::Column;
        copy->text = where->operands[0]->text;
        copy->qualifier = where->operands[0]->qualifier;
        copy->bracketed = where->operands[0]->bracketed;
        return copy;
    };
    select.outputs.push_back({column(), {}});
    select.order.insert(select.order.begin(), OrderKey{column(), false});
    return translate(statement, schema, Literals::Inline, language);
}

QString translateCondition(const Expression &condition, const std::vector<OutputColumn> &columns,
                           const Language &language)
{
    Table row;
    QStringList values;
    for (const OutputColumn &column : columns) {
        row.columns.push_back({column.name, column.kind});
        const QString position = QString::number(row.columns.size());
        const QString value = filled(of(language.parameter, column.kind), {position});
        // The cast has a text compare as the column that it was read from would.
        values.append((column.kind == ValueKind::Text ? QStringLiteral("CAST(%1 AS TEXT)").arg(value) : value)
                      + QLatin1String(" AS ") + quotedName(ExpressionWriter::positionName(row.columns.size())));
    }
    ExpressionWriter writer(Literals::Inline, language);
    writer.addTable({{}, &row, true});
    const QString sql = writer.condition(condition);
    writer.refuseMissing();
    return QLatin1String("SELECT ") + sql + QLatin1String(" FROM (SELECT ") + listed(values) + u')';
}

}
