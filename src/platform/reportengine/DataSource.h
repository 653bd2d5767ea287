#pragma once

#include "platform/engine/Database.h"
#include "platform/reportengine/GroupedRecords.h"
#include "platform/reportengine/Progress.h"

class RowReader;

/// Where a report's records come from: a template and a selection formula held against a database.
class DataSource
{
public:
    /// Learns the kinds of the template's fields and checks everything that depends on them. Nothing is read yet.
    /// @throws ReportError 20537 for a table that the database lacks, 20509 for an unknown field, 20515 for a selection
    /// and 20525 for a template that compares, formats or groups what it cannot, 20521 for a sum over texts.
    DataSource(Database &database, Template &report, Formula &selection);

    /// Keeps no more than the records that match. `progress` is also called while a join is searched without finding
    /// any.
    /// @throws ReportError 20500 for too many records; EngineError.
    GroupedRecords read(const Progress &progress) const;

private:
    void learnKinds();
    void checkJoins() const;
    void checkFormats();
    void checkGroups() const;
    void checkAggregates() const;
    void bindFormulas();
    FieldKind kindOf(const TextPiece &piece) const;
    QString counterOf(const QString &table) const;
    /// Those of `conditions` that are not empty hold for its rows.
    QString statement(const QStringList &conditions) const;
    /// What has been read.
    struct Reading {
        std::vector<Value> values;
        std::vector<Value> pending; ///< a record whose row of the template's table may have a later partner
        std::vector<std::pair<int, QHash<qint64, QString>>> paths; ///< by the folders' numbers, with their field
    };
    void readListed(Reading &reading, const std::vector<double> &keys, RowReader &reader, double &done) const;
    void readAll(Reading &reading, RowReader &reader, double &done) const;
    /// Of the records of one row, which come one after the other, adds the last by `m_lastBy`, or all.
    void add(Reading &reading, const std::vector<Value> &record) const;
    bool isLater(const std::vector<Value> &record, const std::vector<Value> &than) const;
    /// Adds the record's values if both formulas let it through. @throws ReportError 20500 when there are too many.
    void addMatching(Reading &reading, const std::vector<Value> &record) const;

    Database &m_database;
    Template &m_template;
    Formula &m_selection;
    std::vector<int> m_lastBy; ///< fields of joined tables
    QString m_key; ///< the template's table's counter; empty where it has none
};
