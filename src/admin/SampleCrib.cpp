#include "admin/SampleCrib.h"

#include "admin/RowWriter.h"
#include "admin/SampleTrees.h"
#include "admin/SampleWords.h"
#include "db/Schema.h"

#include <QDate>
#include <QTime>

#include <algorithm>
#include <limits>

using namespace SampleWords;

namespace {

constexpr SampleCrib::Scale allScales[] = {
    {.name = "small",
     .types = 60,
     .locations = 40,
     .tools = 500,
     .loans = 2'000,
     .scrapped = 40,
     .employees = 30,
     .jobs = 60,
     .operations = 12,
     .out = 40},
    {.name = "shop",
     .types = 1'000,
     .locations = 600,
     .tools = 8'000,
     .loans = 100'000,
     .scrapped = 3'000,
     .employees = 120,
     .jobs = 900,
     .operations = 30,
     .out = 600},
    {.name = "max",
     .types = 10'000,
     .locations = 5'000,
     .tools = 32'000,
     .loans = 1'000'000,
     .scrapped = 20'000,
     .employees = 500,
     .jobs = 5'000,
     .operations = 60,
     .out = 4'000},
};

/// A point in the crib's time: seconds of working time since its first morning.
using Moment = qint64;
constexpr Moment workday = 12 * 60 * 60;
constexpr Moment today = 2100 * workday; // eight years, to the middle of January 2026
constexpr Moment never = std::numeric_limits<Moment>::max();

QDate dateOf(Moment moment)
{
    const int day = int(moment / workday);
    return QDate(2018, 1, 1).addDays(day / 5 * 7 + day % 5); // a Monday
}

QString stamp(Moment moment)
{
    const QTime time = QTime(6, 0).addSecs(int(moment % workday));
    return dateOf(moment).toString(Qt::ISODate) + time.toString(" HH:mm:ss");
}

/// What a maker's catalogue lists; the crib has several tools of one article.
struct Article {
    const Node *type;
    const Node *home;
    QString description;
    QString maker;
    QString partNumber;
    Cents price;
};

/// A tool, or a scrapped one, that people borrow between `freeFrom` and `until`.
struct Tool {
    int number;
    const Article *article;
    const Node *location;
    Moment freeFrom = 0;
    Moment until = never;
    bool out = false;
};

struct Employee {
    int number;
    Moment leaves;
};

struct Job {
    int number;
    bool shipped;
};

/// What a loan or a scrapped tool is charged to.
struct Charge {
    int kind;
    int number;
};

/// Fills one crib, table by table.
class Filler
{
public:
    Filler(Database &database, const SampleCrib::Scale &scale) : m_database(database), m_scale(scale) { }

    void fill()
    {
        m_types = growTypes(m_scale.types, m_dice);
        m_locations = growLocations(m_scale.locations, m_dice);
        writeTree("Types", m_types);
        writeTree("Locations", m_locations);
        writeEmployees();
        writeOperations();
        planJobs();
        planTools();
        planScrap();
        writeLoans();
        writeTools();
        writeScrap();
        writeJobs();
        m_database.analyze();
    }

private:
    void writeTree(const char *table, const std::vector<Node> &nodes);
    void writeEmployees();
    void writeOperations();
    void planJobs();
    void planTools();
    void planScrap();
    void writeLoans();
    void writeTools();
    void writeScrap();
    void writeJobs();

    std::vector<Article> articles(const std::vector<const Node *> &types, int count);
    std::vector<bool> stillOut() const;
    Tool &borrowable(Moment from, Moment until);
    const Employee &employeeAt(Moment from, Moment until);
    Charge chargeAt(Moment moment, bool keepsJobOpen = false);

    Database &m_database;
    const SampleCrib::Scale &m_scale;
    Dice m_dice;
    std::vector<Node> m_types;
    std::vector<Node> m_locations;
    std::vector<Employee> m_employees;
    QList<int> m_overheads;
    std::vector<Job> m_jobs;
    std::vector<Article> m_bigTypeArticles;
    std::vector<Article> m_drillArticles;
    std::vector<Article> m_otherArticles;
    std::vector<Tool> m_tools; // those in the crib, then the scrapped ones
    QList<int> m_scrappedNumbers;
    int m_highestNumber = 0;
};

void Filler::writeTree(const char *table, const std::vector<Node> &nodes)
{
    RowWriter rows(m_database, table);
    for (const Node &node : std::span(nodes).subspan(1))
        rows.add(node.number, node.name, node.parent);
    rows.flush();
}

void Filler::writeEmployees()
{
    const QStringList last = words(lastNames), first = words(firstNames);
    const int names = int(last.size() * first.size());
    RowWriter rows(m_database, "Employee");
    for (int i = 0; i < m_scale.employees; ++i) {
        // Two who work here have the same name. 997 is prime to the number of names: no other one comes twice.
        const int name = (i == m_scale.employees / 2 ? 1 : i) * 997 % names;
        const bool hasLeft = i % 5 == 3;
        m_employees.push_back({1001 + i, hasLeft ? today / 4 + m_dice.below(today / 2) : never});
        rows.add(m_employees.back().number, last[name % last.size()], first[name / last.size()],
                 QString(hasLeft ? "Inactive" : "Active"));
    }
    rows.flush();
}

void Filler::writeOperations()
{
    // Numbers that neither a job nor a row of the program's own job list has: one number is one node of a tree.
    const QStringList overhead = words(overheads), direct = words(machining);
    RowWriter rows(m_database, "Operation");
    for (int i = 0; i < m_scale.operations; ++i) {
        const int number = 9010 + 10 * i;
        const bool isOverhead = i % 2 == 0;
        rows.add(number, (isOverhead ? overhead : direct)[i / 2], QString(isOverhead ? "O" : "D"));
        if (isOverhead)
            m_overheads << number;
    }
    rows.flush();
}

void Filler::planJobs()
{
    // A job's number is its year and its place in the year: 18001 is the first one of 2018.
    int year = 0, place = 0;
    for (int i = 0; i < m_scale.jobs; ++i) {
        const int opened = dateOf(today * i / m_scale.jobs).year();
        place = opened == year ? place + 1 : 1;
        year = opened;
        const bool inWork = i >= m_scale.jobs * 7 / 8 && m_dice.below(4) > 0;
        m_jobs.push_back({(year - 2000) * 1000 + place, !inWork});
    }
}

std::vector<Article> Filler::articles(const std::vector<const Node *> &types, int count)
{
    static const QStringList allMakers = words(makers);
    std::vector<Article> result;
    for (int i = 0; i < count; ++i) {
        Article article{m_dice.oneOf(types), &m_locations[1 + m_dice.below(m_scale.locations - 1)], {}, {}, {}, {}};
        article.description = toolDescription(*article.type, m_dice);
        if (m_dice.below(25) > 0)
            article.maker = m_dice.oneOf(allMakers);
        if (m_dice.below(10) > 0) {
            const int series = 1000 + m_dice.below(9000), variant = m_dice.below(100);
            article.partNumber =
                QString("%1%2-%3").arg(article.maker.left(2).toUpper()).arg(series).arg(variant, 2, 10, QChar('0'));
        }
        article.price.amount = usualPrice(*article.type) * (25 + m_dice.lowBelow(400)) / 100;
        result.push_back(article);
    }
    return result;
}

void Filler::planTools()
{
    // Loans carry numbers in 16 bits: where these run short, scrapped tools shared theirs, as a new tool took over the
    // tag of the one before. Some numbers are left for tools to come.
    m_highestNumber = std::min(m_scale.tools + m_scale.scrapped, Schema::highestToolNumber - 267);

    std::vector<const Node *> drills, inserts, others;
    for (const Node &type : m_types) {
        if (type.path.size() < 2)
            continue;
        const QString family = familyName(type);
        (family == "Drill" ? drills : family == "Insert" ? inserts : others).push_back(&type);
    }
    // The last to grow is a leaf: there are many inserts of one kind.
    const Node *bigType = inserts.back(), *bigLocation = &m_locations.back();
    inserts.pop_back();
    others.insert(others.end(), inserts.begin(), inserts.end());
    int ofBigType = std::min(500, m_scale.tools / 4), inBigLocation = ofBigType, ofDrills = m_scale.tools * 5 / 32;
    m_bigTypeArticles = articles({bigType}, ofBigType / 10);
    m_drillArticles = articles(drills, ofDrills / 3);
    m_otherArticles = articles(others, (m_scale.tools - ofDrills - ofBigType) / 3);

    // Each draw takes from what is left, so that the totals come out exactly.
    int left = m_scale.tools;
    for (int number = 1; number <= m_highestNumber; ++number) {
        if (m_dice.below(m_highestNumber - number + 1) >= left) {
            m_scrappedNumbers << number;
            continue;
        }
        const int kind = m_dice.below(left);
        const bool isBigType = kind < ofBigType, isDrill = !isBigType && kind < ofBigType + ofDrills;
        const std::vector<Article> &offered = isBigType ? m_bigTypeArticles
            : isDrill                                   ? m_drillArticles
                                                        : m_otherArticles;
        const Article &article = offered[m_dice.lowBelow(std::ssize(offered))];
        const bool isInBigLocation = m_dice.below(left) < inBigLocation;
        m_tools.push_back({number, &article, isInBigLocation ? bigLocation : article.home});
        ofBigType -= isBigType;
        ofDrills -= isDrill;
        inBigLocation -= isInBigLocation;
        --left;
    }
}

void Filler::planScrap()
{
    const int numbers = int(m_scrappedNumbers.size());
    for (int i = 0; i < m_scale.scrapped; ++i) {
        const Article &article = m_otherArticles[m_dice.lowBelow(std::ssize(m_otherArticles))];
        const Moment scrapped = (today * i + m_dice.below(today)) / m_scale.scrapped;
        const Moment bought = i < numbers ? 0 : m_tools[m_tools.size() - numbers].until;
        m_tools.push_back({m_scrappedNumbers[i % numbers], &article, article.home, bought, scrapped});
    }
}

/// Which loans are still open: every third of the newest, and a few that are long overdue.
std::vector<bool> Filler::stillOut() const
{
    const int overdue = m_scale.out / 10, recent = m_scale.out - overdue;
    std::vector<bool> result(m_scale.loans);
    for (int i = 0; i < recent; ++i)
        result[m_scale.loans - 1 - 3 * i] = true;
    for (int i = 0; i < overdue; ++i)
        result[m_scale.loans - 1 - 3 * recent - i * (m_scale.loans / 20 / overdue)] = true;
    return result;
}

Tool &Filler::borrowable(Moment from, Moment until)
{
    for (;;) {
        Tool &tool = m_tools[m_dice.below(std::ssize(m_tools))];
        if (tool.freeFrom <= from && until <= tool.until)
            return tool;
    }
}

const Employee &Filler::employeeAt(Moment from, Moment until)
{
    for (;;) {
        const Employee &employee = m_employees[m_dice.lowBelow(m_scale.employees)];
        if (from <= employee.leaves && until <= employee.leaves)
            return employee;
    }
}

Charge Filler::chargeAt(Moment moment, bool keepsJobOpen)
{
    if (m_dice.below(4) == 0)
        return {Schema::overheadCharge, m_dice.oneOf(m_overheads)};
    const int newest = int(moment * m_scale.jobs / today);
    Job &job = m_jobs[std::max(0, newest - m_dice.lowBelow(m_scale.jobs / 12))];
    job.shipped = job.shipped && !keepsJobOpen;
    return {Schema::jobCharge, job.number};
}

void Filler::writeLoans()
{
    const std::vector<bool> open = stillOut();
    const Moment lastMorning = today - workday;
    RowWriter rows(m_database, "CheckOutIn");
    for (int i = 0; i < m_scale.loans; ++i) {
        const Moment from = (lastMorning * i + m_dice.below(lastMorning)) / m_scale.loans;
        // Most tools are back on the same day, some after three weeks.
        const Moment hours = 1 + m_dice.lowBelow(1 + m_dice.lowBelow(180));
        const Moment back = from + hours * 3600 - m_dice.below(3000);
        const Moment until = open[i] ? never : back < today ? back : today - 1 - m_dice.below(workday);
        Tool &tool = borrowable(from, until);
        const Employee &employee = employeeAt(from, until);
        const Charge charge = chargeAt(from, open[i]);
        const QString number = QString::number(employee.number);
        const Article &article = *tool.article;
        const auto dateIn = open[i] ? std::nullopt : std::optional(stamp(until));
        rows.add(i + 1, tool.number, number, charge.number, charge.kind, stamp(from), dateIn, open[i] ? -1 : 0,
                 article.description, article.partNumber);
        tool.freeFrom = until;
        tool.out = open[i];
    }
    rows.flush();
}

void Filler::writeTools()
{
    RowWriter rows(m_database, "Tools");
    for (const Tool &tool : std::span(m_tools).first(m_scale.tools)) {
        const Article &article = *tool.article;
        rows.add(tool.number, article.type->number, tool.location->number, article.maker, article.partNumber,
                 article.description, article.price, tool.out ? -1 : 0);
    }
    rows.flush();
    // The next tool gets a number that no scrapped one has had.
    m_database.setNextNumber("Tools", m_highestNumber + 1);
}

void Filler::writeScrap()
{
    const QStringList reasons = words(scrapReasons), notes = words(scrapNotes);
    RowWriter reasonRows(m_database, "ScrapReasons");
    for (int i = 0; i < reasons.size(); ++i)
        reasonRows.add(i + 1, reasons[i]);
    reasonRows.flush();

    // A scrap record's number must not meet a tool's.
    int number = m_highestNumber < Schema::firstScrapNumber ? Schema::firstScrapNumber : Schema::highestToolNumber + 1;
    RowWriter rows(m_database, "Scrap");
    for (const Tool &tool : std::span(m_tools).subspan(m_scale.tools)) {
        const Article &article = *tool.article;
        const Employee &employee = employeeAt(tool.until, tool.until);
        const Charge charge = chargeAt(tool.until);
        const int reason = 1 + m_dice.lowBelow(reasons.size());
        const QString note = m_dice.below(3) == 0 ? m_dice.oneOf(notes) : QString();
        // The job's own columns, which the junk reports go by, are the suite's entry; it makes none for overhead.
        std::optional<int> job;
        std::optional<QString> day;
        if (charge.kind == Schema::jobCharge) {
            job = charge.number;
            day = dateOf(tool.until).toString(Qt::ISODate) + " 00:00:00";
        }
        rows.add(number++, tool.number, article.type->number, article.type->name, article.maker, article.partNumber,
                 article.description, article.price, tool.location->number, employee.number, stamp(tool.until),
                 charge.number, charge.kind, reason, note, job, day);
    }
    rows.flush();
}

void Filler::writeJobs()
{
    RowWriter suite(m_database, "Job"), own(m_database, "JobVorlane");
    int ownJobs = 0;
    for (const Job &job : m_jobs) {
        suite.add(job.number, job.shipped ? -1 : 0);
        if (!job.shipped)
            own.add(++ownJobs, job.number);
    }
    suite.flush();
    own.flush();
}

}

std::span<const SampleCrib::Scale> SampleCrib::scales() { return allScales; }

void SampleCrib::fill(Database &database, const Scale &scale) { Filler(database, scale).fill(); }
