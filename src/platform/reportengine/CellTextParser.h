#pragma once

#include "platform/reportengine/Template.h"

/// Reads the text of a cell: "Loans: {count()}   First out: {min(CheckOutIn.DateOut):short date}". What it mentions is
/// added to the template's fields, aggregates and parameters.
class CellTextParser
{
public:
    /// Aggregates run over the group of `level`, or over the report for -1.
    CellTextParser(Template &target, int level, int line) : m_template(target), m_level(level), m_line(line) { }
    /// @throws ReportError 20525 for what it does not know.
    QList<TextPiece> parse(QStringView text);

private:
    TextPiece piece(QStringView inner);
    TextPiece special(QStringView name) const;
    TextPiece parameter(QStringView name);
    TextPiece aggregate(QStringView function, QStringView argument);
    [[noreturn]] void fail(const QString &what) const;

    Template &m_template;
    int m_level;
    int m_line;
};
