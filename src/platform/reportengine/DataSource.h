#pragma once

#include "platform/engine/Database.h"
#include "platform/reportengine/GroupedRecords.h"
#include "platform/system/Progress.h"

#include <QHash>

#include <unordered_map>

class RowReader;

/// Where a report's records come from: a template and a selection formula held against a database.
class DataSource
{
public:
    /// Learns the kinds of the template's fields and checks everything that depends on them. Nothing is read yet.
    /// @throws ReportError 20537 for a table that the database lacks, 20509 for an unknown field, 20515 for a selection
    /// and 20525 for a template that compares, formats or groups what it cannot, 20521 for a sum over texts.
    DataSource(Database &database, Template &report, Formula &selection);

    /// Keeps no more than the records that match and, where the template prints no details, one of those that print
    /// alike unless `each` is wanted. `progress` is also called while a join is searched without finding
    /// any.
    /// @throws ReportError 20500 for too many records; EngineError.
    GroupedRecords read(const Progress &progress, bool each = false) const;

private:
    void learnKinds();
    void checkJoins() const;
    void checkFormats();
    void checkGroups() const;
    void checkAggregates() const;
    void bindFormulas();
    FieldKind kindOf(const TextPiece &piece) const;
    QString counterOf(const QString &table) const;
    /// How a statement calls a field; a path is called by the number of its folder.
    QString column(int field) const;
    /// The template's table and the first of those that are joined to it.
    QString tables(qsizetype joins, bool withPartner = false) const;
    /// Those of `conditions` that are not empty hold for its rows; `withPartner`, rows without a last partner are left
    /// out.
    QString statement(const QStringList &conditions, bool withPartner = false) const;
    /// The fields whose values show outside of sums.
    std::vector<int> printedFields() const;
    struct HashOfValues {
        size_t operator()(const std::vector<Value> &values) const;
    };
    /// What has been read.
    struct Reading {
        std::vector<Value> values;
        bool isFolding = false;
        std::vector<int> printed;
        std::unordered_map<std::vector<Value>, size_t, HashOfValues> rows; ///< by what they print
        FoldedRecords folded;
        std::vector<std::pair<int, QHash<qint64, QString>>> paths; ///< by the folders' numbers, with their field
    };
    void readListed(Reading &reading, const std::vector<double> &keys, RowReader &reader, double &done) const;
    void readAll(Reading &reading, RowReader &reader, double &done) const;
    void readLast(Reading &reading, const QStringList &conditions, RowReader &reader) const;
    /// A row of the table whose last partners count, and the value that makes it the last.
    struct Partner {
        qint64 number;
        Value value;
    };
    /// The last partners by the numbers of the template's rows; at least those for which the conditions hold.
    QHash<qint64, Partner> lastPartners(const QStringList &conditions, RowReader &reader) const;
    bool isJoinedByKey(const Join &join) const;
    bool isLater(const Partner &partner, const Partner &than) const;
    /// Adds the record's values if both formulas let it through. @throws ReportError 20500 when there are too many.
    void addMatching(Reading &reading, const std::vector<Value> &record) const;
    void addRow(Reading &reading, const std::vector<Value> &record) const;
    void fold(Reading &reading, const std::vector<Value> &record) const;

    Database &m_database;
    Template &m_template;
    Formula &m_selection;
    qsizetype m_last = -1; ///< the join of which the last partner counts
    QString m_key; ///< the template's table's counter; empty where it has none
};
