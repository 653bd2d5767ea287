#include "queries/KeptQueries.h"

#include "platform/system/ProgramFolder.h"
#include "platform/text/Format.h"
#include "platform/text/TextCompare.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>

#include <algorithm>

namespace {

constexpr int millisecondsForOthers = 2000;
constexpr qint64 longestFile = 1024 * 1024;
constexpr int version = 1;

struct Period {
    const char *name;
    QDate (*first)(QDate today); ///< null where it begins on the day that was kept
    QDate (*last)(QDate today);
};

QDate sameDay(QDate today) { return today; }
QDate firstOfMonth(QDate today) { return {today.year(), today.month(), 1}; }
QDate firstOfYear(QDate today) { return {today.year(), 1, 1}; }

constexpr Period periodsInOrder[] = {
    {"today", sameDay, sameDay},
    {"until today", nullptr, sameDay},
    {"this month", firstOfMonth, [](QDate today) { return firstOfMonth(today).addMonths(1).addDays(-1); }},
    {"last month", [](QDate today) { return firstOfMonth(today).addMonths(-1); },
     [](QDate today) { return firstOfMonth(today).addDays(-1); }},
    {"this year", firstOfYear, [](QDate today) { return firstOfYear(today).addYears(1).addDays(-1); }},
    {"last year", [](QDate today) { return firstOfYear(today).addYears(-1); },
     [](QDate today) { return firstOfYear(today).addDays(-1); }},
};

QString pathOfFile() { return QDir(ProgramFolder::toNative(ProgramFolder::path())).filePath("queries.json"); }

QJsonObject readFile()
{
    QFile file(pathOfFile());
    if (!file.exists())
        return {};
    if (!file.open(QFile::ReadOnly))
        throw KeptQueriesError(file.fileName() + " cannot be read: " + file.errorString() + '.');
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(file.read(longestFile + 1), &problem);
    if (problem.error != QJsonParseError::NoError)
        throw KeptQueriesError(file.fileName() + " is damaged: " + problem.errorString() + '.');
    if (document["version"].toInt() != version || !document["forms"].isObject())
        throw KeptQueriesError(file.fileName() + " was not written by this version of the program.");
    return document["forms"].toObject();
}

QJsonObject toJson(const KeptCriterion &kept)
{
    return {{"criterion", kept.useBox},  {"range", kept.entry.isRange},   {"from", kept.entry.shown[0]},
            {"to", kept.entry.shown[1]}, {"number", kept.entry.bound[0]}, {"period", kept.period}};
}

KeptCriterion fromJson(const QJsonObject &object)
{
    return {object["criterion"].toString(),
            {object["range"].toBool(),
             {object["from"].toString(), object["to"].toString()},
             {object["number"].toString(), {}}},
            object["period"].toString()};
}

}

Entry KeptCriterion::entryOn(QDate today) const
{
    const auto found = std::ranges::find(periodsInOrder, period, &Period::name);
    if (found == std::end(periodsInOrder))
        return entry;
    const QString first = found->first ? found->first(today).toString(Qt::ISODate) : entry.shown[0];
    const QString last = found->last(today).toString(Qt::ISODate);
    return first == last ? Entry{.shown = {first}} : Entry{.isRange = true, .shown = {first, last}};
}

QStringList KeptQueries::periods()
{
    QStringList names;
    for (const Period &period : periodsInOrder)
        names << period.name;
    return names;
}

QJsonObject KeptQueries::queries() const { return readFile()[m_form].toObject(); }

QStringList KeptQueries::names() const
{
    QStringList names = queries().keys();
    std::ranges::sort(names, [](const QString &a, const QString &b) { return compareText(a, b) < 0; });
    return names;
}

std::vector<KeptCriterion> KeptQueries::criteria(const QString &name) const
{
    std::vector<KeptCriterion> criteria;
    const QJsonArray kept = queries()[name].toArray();
    for (const QJsonValue &criterion : kept)
        criteria.push_back(fromJson(criterion.toObject()));
    return criteria;
}

bool KeptQueries::keep(const QString &name, const std::vector<KeptCriterion> &criteria, bool mayReplace) const
{
    QJsonArray kept;
    for (const KeptCriterion &criterion : criteria)
        kept.append(toJson(criterion));
    return change(name, kept, mayReplace);
}

void KeptQueries::remove(const QString &name) const { change(name, QJsonValue::Undefined, true); }

bool KeptQueries::change(const QString &name, const QJsonValue &criteria, bool mayReplace) const
{
    const QString path = pathOfFile();
    QLockFile lock(path + ".lock");
    if (!lock.tryLock(millisecondsForOthers) && lock.error() == QLockFile::LockFailedError)
        throw KeptQueriesError("Somebody else is keeping a query. Try again.");
    QJsonObject forms = readFile();
    QJsonObject queries = forms[m_form].toObject();
    if (queries.contains(name) && !mayReplace)
        return false;
    queries[name] = criteria; // undefined, it goes
    forms[m_form] = queries;
    QSaveFile file(path);
    const QByteArray content = QJsonDocument(QJsonObject{{"version", version}, {"forms", forms}}).toJson();
    if (content.size() > longestFile)
        throw KeptQueriesError("No more queries can be kept. Delete some.");
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw KeptQueriesError(path + " cannot be written: " + file.errorString() + '.');
    return true;
}
