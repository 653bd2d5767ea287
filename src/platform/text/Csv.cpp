#include "platform/text/Csv.h"

#include <algorithm>
#include <array>

namespace {

constexpr QStringView separators = u",;\t";

bool isLineEnd(QChar c) { return c == u'\n' || c == u'\r'; }

/// Whether a spreadsheet would run the text, or might once the apostrophes before it are gone.
bool isLikeFormula(QStringView text)
{
    while (text.startsWith(u'\''))
        text = text.sliced(1);
    return !text.isEmpty() && QStringView(u"=+-@\t\r\n").contains(text.front());
}

}

QString csvField(const QString &text)
{
    const auto needsQuotes = [](QChar c) { return c == u'"' || isLineEnd(c) || separators.contains(c); };
    return std::any_of(text.begin(), text.end(), needsQuotes) ? csvQuoted(text) : text;
}

QString csvQuoted(QString text) { return '"' + text.replace('"', QStringLiteral("\"\"")) + '"'; }

QString csvGuarded(const QString &text) { return isLikeFormula(text) ? '\'' + text : text; }

QString csvUnguarded(const QString &text)
{
    return text.startsWith(u'\'') && isLikeFormula(text) ? text.sliced(1) : text;
}

QChar CsvReader::separatorIn(QStringView text)
{
    std::array<int, separators.size()> counts{};
    bool isQuoted = false;
    for (const QChar c : text) {
        if (c == u'"')
            isQuoted = !isQuoted;
        else if (!isQuoted && isLineEnd(c))
            break;
        else if (const qsizetype found = separators.indexOf(c); !isQuoted && found >= 0)
            ++counts[found];
    }
    return separators[std::ranges::max_element(counts) - counts.begin()];
}

bool CsvReader::read(CsvRow &row)
{
    if (m_at >= m_text.size())
        return false;
    row = {.line = m_line};
    while (readCell(row)) { }
    return true;
}

/// @returns whether another one follows.
bool CsvReader::readCell(CsvRow &row)
{
    CsvRow::Cell cell;
    if (peek() == u'"')
        readQuoted(row, cell);
    const qsizetype begin = m_at;
    while (m_at < m_text.size() && m_text[m_at] != m_separator && !isLineEnd(m_text[m_at]))
        ++m_at;
    const QStringView rest = m_text.sliced(begin, m_at - begin);
    if (!row.fault.isEmpty())
        row.cells.clear();
    else if (cell.isQuoted && !rest.trimmed().isEmpty())
        row.fault = QStringLiteral("text follows the quotation mark that ends a cell");
    else if (qMax(cell.text.size(), rest.size()) > longestCell)
        row.fault = QStringLiteral("a cell has more than %1 characters").arg(longestCell);
    else if (row.cells.size() == mostCells)
        row.fault = QStringLiteral("there are more than %1 cells").arg(mostCells);
    else
        row.cells.push_back({cell.isQuoted ? cell.text : rest.toString(), cell.isQuoted});
    if (m_at < m_text.size() && m_text[m_at] == m_separator) {
        ++m_at;
        return true;
    }
    takeLineEnd();
    return false;
}

void CsvReader::readQuoted(CsvRow &row, CsvRow::Cell &cell)
{
    cell.isQuoted = true;
    const qsizetype begin = m_at;
    do {
        const qsizetype from = m_at + 1, end = m_text.indexOf(u'"', from);
        if (end < 0)
            row.fault = QStringLiteral("a quotation mark is not closed");
        m_at = end < 0 ? m_text.size() : end;
        cell.text += m_text.sliced(from, m_at - from);
        if (++m_at < m_text.size() && m_text[m_at] == u'"')
            cell.text += u'"';
    } while (peek() == u'"');
    m_at = qMin(m_at, m_text.size());
    for (qsizetype i = begin; i < m_at; ++i)
        m_line += m_text[i] == u'\n' || (m_text[i] == u'\r' && (i + 1 == m_text.size() || m_text[i + 1] != u'\n'));
}

void CsvReader::takeLineEnd()
{
    if (m_at >= m_text.size())
        return;
    const bool isTwo = m_text[m_at] == u'\r' && m_at + 1 < m_text.size() && m_text[m_at + 1] == u'\n';
    m_at += isTwo ? 2 : 1;
    ++m_line;
}
