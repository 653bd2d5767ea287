#pragma once

#include <QStringList>

#include <algorithm>
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

/// What is wrong with a file, by its lines. What is wrong with many lines alike is told once.
class CsvFaults
{
public:
    static constexpr size_t longestList = 50;

    /// `line` is 0 for what is wrong with the whole.
    void add(int line, const QString &heading, const QString &words)
    {
        ++m_count;
        Fault &fault = m_first[{heading, words}];
        if (fault.times == 0 || line < fault.place.first)
            fault.place = {line, m_count};
        ++fault.times;
        if (m_first.size() > longestList)
            m_first.erase(std::ranges::max_element(m_first, {}, [](const auto &entry) { return entry.second.place; }));
    }
    qsizetype count() const { return m_count; }
    /// The first of them in the order of their lines, and how many more there are.
    QStringList list() const
    {
        std::map<Place, QString> inOrder;
        qsizetype more = m_count;
        for (const auto &[what, fault] : m_first) {
            QStringList parts;
            if (fault.place.first > 0)
                parts << QString("line %1").arg(fault.place.first);
            if (!what.first.isEmpty())
                parts << what.first;
            QString text = parts.isEmpty() ? what.second : parts.join(", ") + ": " + what.second;
            if (fault.times > 1)
                text += QString(" (and in %1 more lines)").arg(fault.times - 1);
            inOrder.emplace(fault.place, text);
            more -= fault.times;
        }
        QStringList all;
        for (const auto &[place, text] : inOrder)
            all << text;
        if (more > 0)
            all << QString("... and %1 more").arg(more);
        return all;
    }

private:
    using Place = std::pair<int, qsizetype>; ///< a line, then as they came
    struct Fault {
        Place place; ///< the first
        int times = 0;
    };
    std::map<std::pair<QString, QString>, Fault> m_first; ///< by heading and words
    qsizetype m_count = 0;
};
