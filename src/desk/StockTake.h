#pragma once

#include "desk/Code.h"
#include "desk/ToolAtHand.h"

#include <QList>
#include <QMap>
#include <QSet>

#include <memory>
#include <optional>
#include <vector>

class Places;
class QLockFile;

/// A count of the tools of one location and of what lies below it. What was seen is kept in a small file beside the
/// crib's database until the count is finished; what is missing is always reckoned from the crib as it is.
class StockTake
{
public:
    /// The first six are what a scan can turn out to be.
    enum Result {
        Right,
        Elsewhere, ///< belongs to another location
        Out, ///< on loan, but here
        Scrapped,
        Unknown,
        Already,
        Ticked, ///< by hand
        Stored, ///< belonged elsewhere, and was given its place here
        TakenBack, ///< was on loan
    };
    /// What was seen.
    struct Mark {
        Result result = Right;
        QString at = {}; ///< when, in the form that is stored
        QString description = {}; ///< of the tool; of an unknown code the code
        QString partNumber = {};
        QString note = {}; ///< where it belongs, or who had it
    };
    struct Tool {
        qint64 id = 0;
        QString description;
        QString partNumber;
        QString place; ///< within the counted location
    };

    /// Locations of which an unfinished count is kept.
    static QList<qint32> unfinished();
    /// Begins a count, or takes it up where it was left. @throws Refusal in words when another desk is at it, or what
    /// is kept of it cannot be read.
    static StockTake at(qint32 location);
    StockTake(StockTake &&) noexcept;
    StockTake &operator=(StockTake &&) noexcept;
    ~StockTake();

    qint32 location() const { return m_location; }
    QString name() const { return m_name; }
    /// Where things are scanned just now: the location, or one below it.
    qint32 here() const { return m_here; }
    QString hereName() const { return m_hereName; }
    /// @throws Refusal for a location that is not below the counted one.
    void goTo(qint32 location);

    /// What this scan is; nothing is stored by it.
    Result look(const Code &code, const std::optional<ToolAtHand> &tool) const;
    /// Keeps what was seen, of a tool by its number. @throws Refusal when it cannot be kept.
    void put(const QString &key, Mark mark);
    void remove(const QString &key);
    std::optional<Mark> markOf(const QString &key) const;

    enum Reading {
        IfChanged, ///< by others, in which tools there are and where each one belongs
        Anew,
    };
    /// Reads what belongs here. Before put() and remove(), which ask the crib nothing.
    void refresh(Reading reading = IfChanged);
    int expected() const { return int(m_tools.size()); }
    int counted() const { return expected() - int(m_missing.size()); }
    int number(Result result) const;
    const QList<Tool> &missing() const { return m_missing; }
    /// "37 of 120, 3 elsewhere, 1 out"
    QString summary() const;

    /// A line of the result, under a heading.
    struct Line {
        int order = 0; ///< of the heading
        QString heading;
        QString number;
        QString description;
        QString partNumber;
        QString note;
    };
    QList<Line> result() const;

    /// Forgets what was kept. @throws Refusal where its file cannot be deleted: the count goes on.
    void finish();

private:
    StockTake();
    void load(const QString &file);
    void save() const;
    void keep(const QString &key, const std::optional<Mark> &before);
    void setMark(const QString &key, const std::optional<Mark> &mark);
    void readTools(const Places &places, const QString &condition);
    void findMissing();
    void judgeAnew(const Places &places, const QList<qint32> &counted);

    qint32 m_location = 0;
    qint32 m_here = 0;
    QString m_name, m_hereName, m_file;
    QString m_begun;
    QMap<QString, Mark> m_marks; ///< by the tool's number, or by an unknown code
    QSet<qint32> m_within; ///< the location that is scanned just now, and those below it
    QList<Tool> m_tools; ///< that belong here and are not out
    std::vector<qint64> m_asRead; ///< by which a change shows
    QList<Tool> m_missing;
    std::unique_ptr<QLockFile> m_lock;
};
