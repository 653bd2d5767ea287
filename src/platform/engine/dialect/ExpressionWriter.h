#pragma once

#include "platform/engine/dialect/Language.h"
#include "platform/engine/dialect/Statement.h"
#include "platform/engine/dialect/Translation.h"

#include <QStringList>

#include <span>

namespace dialect {

/// An expression in the language of the engine below.
struct Written {
    QString sql;
    ValueKind kind = ValueKind::Unknown;
    bool isDay = false; ///< a date without a time
};

/// A table as a statement's FROM calls it.
struct NamedTable {
    QString name;
    const Table *table;
    bool byPosition = false; ///< its columns are called column1 onwards
};

/// Where a column was found: nowhere, once or, in several tables, more often.
struct FoundColumn {
    int times = 0;
    const NamedTable *table = nullptr;
    int column = -1;

    const Column &operator*() const { return table->table->columns[column]; }
};

/// Writes the conditions and values of one statement over the tables that it names.
class ExpressionWriter
{
public:
    ExpressionWriter(Literals literals, const Language &language) : m_literals(literals), m_language(language) { }

    // ---- tables and columns
    /// Adds a table of the statement's FROM. @throws EngineError 3081 for a second one of the same name.
    void addTable(const NamedTable &table);
    const std::vector<NamedTable> &tables() const { return m_tables; }
    FoundColumn find(const Expression &column) const;
    static Written column(const NamedTable &table, int column);
    /// "column1" for 1: the name of a column that is found by its place.
    static QString positionName(size_t position);
    /// Notes a name that no table has. The engine takes it for a parameter that was given no value.
    void addMissing(const QString &name);
    /// @throws EngineError 3061 with the number of such names, if there are any.
    void refuseMissing() const;

    // ---- conditions and values
    /// A condition gives 1, 0 or null.
    QString condition(const Expression &expression);
    /// The condition of a join, which may name the tables joined there: those with the numbers `from` to `to` - 1.
    /// @throws EngineError 3082 where it names another.
    QString joinCondition(const Expression &expression, size_t from, size_t to);
    /// A value; a condition among them is -1, 0 or null.
    Written value(const Expression &expression);
    /// A value of a SELECT's list, the only place where rows may be counted; refuseMixedCount() is due after the last.
    Written output(const Expression &expression);
    /// Notes that a star stands in a SELECT's list.
    void addAllColumns() { m_plainColumn = QStringLiteral("*"); }
    /// @throws EngineError 3122 for a list that counts rows and shows the columns of a row as well.
    void refuseMixedCount() const;
    bool counts() const { return m_counts; }
    /// A value as `column` stores it.
    QString stored(const Expression &expression, const Column &column);
    QString stored(const Written &written, const Column &column) const;
    /// Whether both mean the same value.
    bool same(const Expression &a, const Expression &b);
    /// Notes that the translation depends on the literal's value: the statement with another one is translated anew.
    void pin(const Expression &literal);
    /// By which a value is compared and sorted: a text as compareText() does, anything else as it is.
    QString key(const Written &value) const;

    /// What the statement's literals became.
    std::vector<Parameter> parameters;
    std::vector<PinnedLiteral> pinned;

private:
    FoundColumn find(QStringView qualifier, QStringView name) const;
    void requireJoined(const NamedTable &table) const;
    Written column(const Expression &expression);

    QString parameter(const Parameter &parameter, ValueKind kind);
    Written literal(const Expression &expression, const Parameter &use);
    Written literal(const Expression &expression);
    QString inlineLiteral(const Expression &expression, const Parameter &use, ValueKind kind) const;
    QString asText(const Written &value) const;
    QString storable(const Written &written, ValueKind kind) const;
    QString filledFor(const Language::ByKind &forms, const Written &value) const;

    /// How two values are compared. Values of different kinds compare by value, as a loan's employee, a text, and the
    /// employee's number do; a text that is no number does not compare then. A date without a time is the whole day.
    enum class Way { AsStored, ByDay, ByNumber };
    static Way wayBetween(const Written &a, const Written &b);
    QString taken(const Written &value, Way way) const;
    /// `values` in the forms by which they can be compared with one another, all in one way.
    QStringList comparable(const std::vector<Written> &values, Way way) const;
    std::vector<Written> comparedValues(const Expression &expression);
    Written comparedValue(const Expression &operand, ValueKind other, bool shortDates);
    QString comparison(const Expression &expression);
    QString between(const Expression &expression);
    QString in(const Expression &expression);

    QString like(const Expression &expression);

    Written number(const Expression &expression);
    Written arithmetic(const Expression &expression);
    Written function(const Expression &expression);
    Written aggregate(const Expression &expression);
    Written choice(const Expression &expression);
    Written format(const Expression &expression);

    /// What may stand where: counting, plain columns beside it.
    enum class Place { Row, Output, Counted };

    Literals m_literals;
    const Language &m_language;
    std::vector<NamedTable> m_tables;
    std::span<const NamedTable> m_joined; ///< the tables that a join's condition may speak of
    QStringList m_missing;
    Place m_place = Place::Row;
    int m_betweens = 0; ///< how deep they lie within one another
    bool m_counts = false;
    QString m_plainColumn; ///< the first column outside of a count
};

}
