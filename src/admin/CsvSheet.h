#pragma once

#include "admin/CsvFaults.h"
#include "admin/CsvKind.h"
#include "admin/PriceNotation.h"
#include "platform/engine/Recordset.h"
#include "platform/text/Csv.h"

#include <functional>
#include <optional>

/// A CSV file's rows as values of a kind's columns. What they mean to a crib is not looked at.
class CsvSheet
{
public:
    struct Row {
        int line;
        std::vector<Value> values; ///< one for each column of the kind; a path as text, and null after a fault
    };

    /// Reads the file. `decimal` says how its prices are written, where they cannot tell by themselves.
    /// @throws Refusal where no row can be read: no text, wrong headings, prices of two meanings.
    CsvSheet(const QString &file, const CsvKind &kind, std::optional<DecimalSign> decimal, CsvFaults &faults,
             const std::function<void(int percent)> &progress = {});

    const std::vector<Row> &rows() const { return m_rows; }
    /// What may not be meant, of the file as a whole and of its texts.
    QStringList notes() const;

private:
    QString textOf(const QByteArray &bytes);
    void readHeadings(const CsvRow &row);
    void readRows(CsvReader &reader, const std::function<void(int percent)> &progress);
    void findDecimalSign();
    Row converted(const CsvRow &row) const;
    Value converted(const CsvRow::Cell &cell, const CsvColumn &column) const;

    const CsvKind &m_kind;
    CsvFaults &m_faults;
    std::optional<DecimalSign> m_decimal;
    bool m_isWindows1252 = false; ///< the code page of Western Europe, for it is no UTF-8
    std::vector<int> m_columns; ///< of the kind, for each heading; -1 for an empty one
    std::vector<CsvRow> m_cells;
    std::vector<Row> m_rows;
};
