#include "desk/StockTake.h"

#include "db/Literals.h"
#include "db/Session.h"
#include "desk/Places.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"
#include "platform/system/SafeAppend.h"
#include "platform/text/Format.h"
#include "platform/text/TextCompare.h"
#include "transactions/AtomicChange.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace {

constexpr auto fileName = "stocktake-%1.json";

/// How results stand in the file.
struct Name {
    StockTake::Result result;
    const char *name;
};
constexpr Name names[] = {
    {StockTake::Right, "right"},       {StockTake::Elsewhere, "elsewhere"},  {StockTake::Out, "out"},
    {StockTake::Scrapped, "scrapped"}, {StockTake::Unknown, "unknown"},      {StockTake::Ticked, "ticked"},
    {StockTake::Stored, "stored"},     {StockTake::TakenBack, "taken back"},
};

QJsonObject toJson(const StockTake::Mark &mark)
{
    return {{"result", std::ranges::find(names, mark.result, &Name::result)->name},
            {"at", mark.at},
            {"description", mark.description},
            {"part", mark.partNumber},
            {"note", mark.note}};
}

std::optional<StockTake::Mark> markIn(const QJsonObject &seen)
{
    const QString result = seen["result"].toString();
    const auto name = std::ranges::find_if(names, [&](const Name &row) { return result == QLatin1String(row.name); });
    if (name == std::end(names))
        return {};
    return StockTake::Mark{name->result, seen["at"].toString(), seen["description"].toString(), seen["part"].toString(),
                           seen["note"].toString()};
}

QByteArray asLine(const QJsonObject &object) { return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n'; }

// Beside the database, so that whoever comes to that crib next finds it; in a crib folder that only the administrator
// writes to, as with a connection file for all users, in the user's own.
QString folder()
{
    const QString crib = ProgramFolder::path();
    if (QFileInfo(crib).isWritable())
        return crib;
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QDir().mkpath(own);
    return own;
}

}

StockTake::StockTake() = default;
StockTake::StockTake(StockTake &&) noexcept = default;
StockTake &StockTake::operator=(StockTake &&) noexcept = default;
StockTake::~StockTake() = default;

QList<qint32> StockTake::unfinished()
{
    QList<qint32> locations;
    for (const QString &file : QDir(folder()).entryList({QString(fileName).arg('*')}, QDir::Files, QDir::Time))
        locations.append(file.section('-', 1).section('.', 0, 0).toInt());
    return locations;
}

StockTake StockTake::at(qint32 location)
{
    const Places places;
    const QString number = QString::number(location);
    refuseUnless(places.contains(location), "There is no location L" + number + '.');
    StockTake count;
    count.m_location = location;
    count.m_name = places.name(location);
    count.m_file = QDir(folder()).filePath(QString(fileName).arg(number));
    count.m_begun = Format::generalDate(Clock::now());
    count.m_lock = std::make_unique<QLockFile>(count.m_file + ".lock");
    count.m_lock->setStaleLockTime(0); // a count may take days; only a desk that is gone has given it up
    if (!count.m_lock->tryLock(0)) {
        if (count.m_lock->error() != QLockFile::LockFailedError)
            throw Refusal("The count cannot be kept, nothing may be written there. ("
                          + QDir::toNativeSeparators(count.m_file) + ')');
        // Whether a desk of another computer still lives is not to be known from here.
        qint64 process = 0;
        QString computer, program;
        count.m_lock->getLockInfo(&process, &computer, &program);
        throw Refusal("Another desk is counting " + count.m_name + (computer.isEmpty() ? "" : " on " + computer)
                      + "; finish it or put it aside there. If that desk is gone, delete "
                      + QDir::toNativeSeparators(count.m_file) + ".lock");
    }
    count.m_here = location;
    if (QFile::exists(count.m_file))
        count.load(count.m_file);
    count.m_here = places.within(location).contains(count.m_here) ? count.m_here : location;
    count.save();
    count.refresh();
    return count;
}

void StockTake::load(const QString &path)
{
    QFile file(path);
    const bool isOpen = file.open(QIODevice::ReadOnly);
    const QJsonObject all = QJsonDocument::fromJson(file.readLine()).object();
    if (!isOpen || all["version"].toInt() != 1 || !all["seen"].isObject())
        throw Refusal("What is kept of the count of " + m_name
                      + " cannot be read; have a look at it or delete it: " + QDir::toNativeSeparators(path));
    m_begun = all["begun"].toString();
    m_here = all["here"].toInt(m_location);
    const QJsonObject seen = all["seen"].toObject();
    for (auto it = seen.begin(); it != seen.end(); ++it)
        setMark(it.key(), markIn(it->toObject()));
    // The last line may have been cut off with the power: it was not said to be kept.
    while (!file.atEnd())
        if (const QJsonObject line = QJsonDocument::fromJson(file.readLine()).object(); line["key"].isString())
            setMark(line["key"].toString(), markIn(line["seen"].toObject()));
}

void StockTake::save() const
{
    QJsonObject seen;
    for (auto it = m_marks.begin(); it != m_marks.end(); ++it)
        seen[it.key()] = toJson(*it);
    const QJsonObject all{{"version", 1},   {"location", m_location}, {"name", m_name},
                          {"here", m_here}, {"begun", m_begun},       {"seen", seen}};
    QSaveFile file(m_file);
    if (!file.open(QIODevice::WriteOnly) || file.write(asLine(all)) < 0 || !file.commit())
        throw Refusal("This could not be kept and does not count: " + file.errorString());
}

// One line more: of a large count the whole file would take too long at each scan. What could not be kept does not
// count.
void StockTake::keep(const QString &key, const std::optional<Mark> &before)
{
    QJsonObject change{{"key", key}};
    if (const auto mark = markOf(key))
        change["seen"] = toJson(*mark);
    try {
        if (!appendSafely(m_file, asLine(change)))
            save(); // somebody has deleted it
    } catch (...) {
        setMark(key, before);
        throw;
    }
    findMissing();
}

void StockTake::setMark(const QString &key, const std::optional<Mark> &mark)
{
    if (mark)
        m_marks.insert(key, *mark);
    else
        m_marks.remove(key);
}

void StockTake::goTo(qint32 location)
{
    const Places places;
    refuseUnless(places.contains(location), "There is no location L" + QString::number(location) + '.');
    refuseUnless(places.within(m_location).contains(location),
                 places.path(location) + " is not in " + m_name + ". To count it, scan COUNT first.");
    const qint32 before = std::exchange(m_here, location);
    try {
        save();
    } catch (...) {
        m_here = before;
        throw;
    }
    refresh();
}

StockTake::Result StockTake::look(const Code &code, const std::optional<ToolAtHand> &tool) const
{
    if (m_marks.contains(code.kind == Code::Tool ? QString::number(code.number) : code.text))
        return Already;
    if (!tool)
        return code.kind == Code::Tool && ToolAtHand::isScrapped(code.number) ? Scrapped : Unknown;
    if (tool->isOut)
        return Out;
    return m_within.contains(tool->location) ? Right : Elsewhere;
}

void StockTake::put(const QString &key, Mark mark)
{
    const std::optional<Mark> before = markOf(key);
    mark.at = Format::generalDate(Clock::now());
    setMark(key, mark);
    keep(key, before);
}

void StockTake::remove(const QString &key)
{
    const std::optional<Mark> before = markOf(key);
    setMark(key, {});
    keep(key, before);
}

std::optional<StockTake::Mark> StockTake::markOf(const QString &key) const
{
    const auto found = m_marks.find(key);
    return found == m_marks.end() ? std::nullopt : std::optional(*found);
}

// Before each scan, so that it is cheap as long as nothing has changed.
void StockTake::refresh(Reading reading)
{
    const Places places;
    const QList<qint32> within = places.within(m_here);
    m_within = {within.begin(), within.end()};
    m_hereName = places.path(m_here, m_location);
    const QList<qint32> counted = places.within(m_location);
    const QString condition = " from Tools where Location in (" + joined(counted) + ')';
    std::vector<qint64> asRead;
    // Each is answered from an index alone; together they would ask for every tool's row.
    for (const QString &statement : {"Select ID,Location" + condition, QString("Select ID from Tools where Out=-1")}) {
        const Recordset rows = openRecordset(statement);
        for (int row = 0; row < rows.recordCount(); ++row)
            for (int column = 0; column < rows.fieldCount(); ++column)
                asRead.push_back(rows.at(row, column).toInteger());
    }
    if (reading == Anew || asRead != m_asRead) {
        readTools(places, condition + " and Out=0");
        m_asRead = std::move(asRead);
    }
    judgeAnew(places, counted);
    findMissing();
}

void StockTake::readTools(const Places &places, const QString &condition)
{
    QHash<qint32, QString> paths;
    QList<Tool> tools;
    Recordset rows = openRecordset("Select ID,Description,PartNumber,Location" + condition + " order by Description");
    for (; !rows.atEnd(); rows.moveNext()) {
        const auto location = qint32(rows.field(3).toInteger());
        QString &path = paths[location];
        if (path.isEmpty())
            path = places.path(location, m_location);
        tools.append({rows.field(0).toInteger(), rows.field(1).toText(), rows.field(2).toText(), path});
    }
    // Whoever looks for them goes from place to place.
    std::ranges::stable_sort(tools, {}, &Tool::place);
    m_tools = tools;
}

// What was asked about a tool may be done since: in the explorer, or by a desk that was killed before it noted it.
void StockTake::judgeAnew(const Places &places, const QList<qint32> &counted)
{
    const auto isOpen = [](const Mark &mark) { return mark.result == Elsewhere || mark.result == Out; };
    QList<qint32> open;
    for (auto it = m_marks.begin(); it != m_marks.end(); ++it)
        if (isOpen(*it))
            open.append(it.key().toInt());
    if (open.isEmpty())
        return;
    Recordset rows = openRecordset("Select ID,Location from Tools where Out=0 and ID in (" + joined(open) + ')');
    for (; !rows.atEnd(); rows.moveNext()) {
        Mark &mark = m_marks[rows.field(0).toText()];
        const auto location = qint32(rows.field(1).toInteger());
        const QString place = places.path(location);
        const bool isHere = counted.contains(location);
        if (mark.result == Out) {
            if (const auto tool = ToolAtHand::find(rows.field(0).toInteger()); !tool || tool->isOut)
                continue; // a loan without the flag
            mark.result = isHere ? TakenBack : Elsewhere;
            mark.note = isHere ? mark.note : place;
        } else if (place != mark.note) {
            mark.result = isHere ? Stored : Elsewhere;
            mark.note = isHere ? mark.note : place;
        }
    }
}

void StockTake::findMissing()
{
    QSet<qint64> seen;
    for (auto it = m_marks.begin(); it != m_marks.end(); ++it)
        if (it.key().front().isDigit()) // "+5" is an unknown code
            seen.insert(it.key().toLongLong());
    m_missing.clear();
    std::ranges::copy_if(m_tools, std::back_inserter(m_missing),
                         [&](const Tool &tool) { return !seen.contains(tool.id); });
}

int StockTake::number(Result result) const { return int(std::ranges::count(m_marks, result, &Mark::result)); }

QString StockTake::summary() const
{
    QString text = QString("%1 of %2").arg(counted()).arg(expected());
    for (const auto &[result, word] :
         {std::pair(Elsewhere, "elsewhere"), {Out, "out"}, {Scrapped, "scrapped"}, {Unknown, "unknown"}})
        if (const int found = number(result))
            text += QString(", %1 %2").arg(found).arg(word);
    return text;
}

QList<StockTake::Line> StockTake::result() const
{
    QList<Line> lines;
    for (const Tool &tool : m_missing)
        lines.append({1, "Missing", 'T' + QString::number(tool.id), tool.description, tool.partNumber, tool.place});
    struct Heading {
        Result result;
        const char *text;
    };
    constexpr Heading headings[] = {
        {Elsewhere, "Here, but belongs elsewhere"}, {Out, "Here, but out on loan"},
        {Scrapped, "Here, but scrapped"},           {Unknown, "Unknown"},
        {Stored, "Stored here during the count"},   {TakenBack, "Taken back during the count"}};
    int order = 1;
    for (const Heading &heading : headings) {
        ++order;
        for (auto it = m_marks.begin(); it != m_marks.end(); ++it)
            if (it->result == heading.result)
                lines.append({order, heading.text, it->result == Unknown ? QString() : 'T' + it.key(), it->description,
                              it->partNumber, it->note});
    }
    // The missing ones stay as they are found, from place to place.
    const auto seen = std::ranges::find_if(lines, [](const Line &line) { return line.order > 1; });
    std::stable_sort(seen, lines.end(), [](const Line &a, const Line &b) {
        return a.order != b.order ? a.order < b.order : compareText(a.description, b.description) < 0;
    });
    return lines;
}

void StockTake::finish()
{
    QFile file(m_file);
    refuseUnless(file.remove() || !file.exists(),
                 m_name + " was not finished: " + QDir::toNativeSeparators(m_file) + " cannot be deleted. "
                     + file.errorString());
    m_lock.reset();
}
