#pragma once

#include <QStringList>

#include <map>
#include <stdexcept>

/// Why a cell cannot be taken, in words that go on a sentence which names the line and the heading.
class CellFault : public std::runtime_error
{
public:
    explicit CellFault(const QString &words) : std::runtime_error(words.toStdString()) { }
    QString words() const { return QString::fromUtf8(what()); }
};

/// A cell's text as a sentence quotes it: of one line, and not too long.
inline QString inMarks(const QString &text)
{
    constexpr int longest = 60;
    const QString line = text.simplified();
    return '"' + (line.size() > longest ? line.first(longest) + "..." : line) + '"';
}

/// What is wrong with a file, by its lines.
class CsvFaults
{
public:
    static constexpr size_t longestList = 50;

    /// `line` is 0 for what is wrong with the whole.
    void add(int line, const QString &heading, const QString &words)
    {
        QStringList place;
        if (line > 0)
            place << QString("line %1").arg(line);
        if (!heading.isEmpty())
            place << heading;
        m_first.emplace(line, place.isEmpty() ? words : place.join(", ") + ": " + words);
        if (m_first.size() > longestList)
            m_first.erase(std::prev(m_first.end()));
        ++m_count;
    }
    qsizetype count() const { return m_count; }
    /// The first of them in the order of their lines, and how many more there are.
    QStringList list() const
    {
        QStringList all;
        for (const auto &[line, text] : m_first)
            all << text;
        if (m_count > all.size())
            all << QString("... and %1 more").arg(m_count - all.size());
        return all;
    }

private:
    std::multimap<int, QString> m_first;
    qsizetype m_count = 0;
};
