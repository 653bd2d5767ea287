#pragma once

#include "admin/CsvSheet.h"
#include "admin/FolderTree.h"

#include <QSet>

/// What the rows of a CSV file become in a crib. They are held against what is in it, and then stored.
class CsvPlan
{
public:
    /// Reads what the rows may contradict; without a database the crib is empty.
    explicit CsvPlan(const CsvKind &kind, Database *database = nullptr);

    /// Adds the rows. What cannot be stored of them is a fault.
    void take(const CsvSheet &sheet, CsvFaults &faults);
    /// Stores all that was taken without a fault; for use in the transaction in which the crib was read.
    void store(Database &database) const;

    /// What is new, a line each.
    QStringList report() const;
    /// What may not be meant.
    QStringList notes() const;

private:
    /// Rows that all have the same values.
    struct Rows {
        std::vector<Value> values; ///< one for each column of the kind
        int count = 1;
    };
    /// How often something is met, and where first.
    struct Met {
        int count = 0, firstLine = 0;
        void at(int line) { firstLine = count++ == 0 ? line : firstLine; }
        QString note(const QString &what) const;
    };

    Value stored(const CsvColumn &column, const Value &value);
    Value folder(FolderTree &tree, const QString &path) const;
    void storeOwnJobs(Database &database) const;
    qint64 rowCount() const;

    const CsvKind &m_kind;
    FolderTree m_types, m_locations;
    QSet<QString> m_unique; ///< what no row may have again
    QSet<QString> m_ownJobs; ///< numbers in the program's own list
    qint64 m_next = 1, m_nextOwnJob = 1;
    std::vector<Rows> m_rows;
    Met m_quotes, m_none;
};
