#pragma once

#include <QString>

#include <vector>

/// What a file begins with, so that spreadsheets read it as UTF-8.
inline constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// `text` as one field of comma-separated values (RFC 4180): a text with a separator that spreadsheets take, a
/// quotation mark or a line break stands in quotation marks, those inside doubled; any other stands as it is.
QString csvField(const QString &text);
/// The same always in quotation marks.
QString csvQuoted(QString text);

/// `text` so that a spreadsheet shows it where it would run a formula: with an apostrophe before =, +, -, @, a tab or a
/// line break. Apostrophes that stand there already are kept apart from it by one more.
QString csvGuarded(const QString &text);
/// What csvGuarded() was given; any other text as it is.
QString csvUnguarded(const QString &text);

/// One row of comma-separated values. In quotation marks a cell may go on over several lines of the file.
struct CsvRow {
    struct Cell {
        QString text;
        bool isQuoted = false;
    };
    int line = 1; ///< of the file, where it begins
    std::vector<Cell> cells = {};
    QString fault = {}; ///< why its cells cannot be told; empty where they can
};

/// Takes comma-separated values apart, as RFC 4180 has them; a quotation mark inside of a cell that does not begin with
/// one counts as any other character.
class CsvReader
{
public:
    /// What a spreadsheet holds in a cell, and more than any table of ours has columns.
    static constexpr int longestCell = 32767, mostCells = 256;

    /// `text` must outlive the reader.
    CsvReader(QStringView text, QChar separator) : m_text(text), m_separator(separator) { }
    /// The separator that stands in the first line most often outside of quotation marks: comma, semicolon or tab.
    static QChar separatorIn(QStringView text);

    /// Reads the next row. @returns whether there was one.
    bool read(CsvRow &row);
    /// How much of the text is read, in a hundred.
    int percent() const { return m_text.isEmpty() ? 100 : int(m_at * 100 / m_text.size()); }

private:
    QChar peek() const { return m_at < m_text.size() ? m_text[m_at] : QChar(); }
    bool readCell(CsvRow &row);
    void readQuoted(CsvRow &row, CsvRow::Cell &cell);
    void takeLineEnd();

    QStringView m_text;
    QChar m_separator;
    qsizetype m_at = 0;
    int m_line = 1;
};
