#include "bench/Measurement.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <ctime>
#include <vector>

namespace {

double now(Case::Clock clock)
{
    timespec time{};
    clock_gettime(clock == Case::Wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

double secondsOf(const Case &what, const Case::Side &side, Crib &crib)
{
    double seconds = 0;
    for (int i = 0; i < what.repeats; ++i) {
        if (side.prepare)
            side.prepare(crib);
        const double before = now(what.clock);
        side.run(crib);
        seconds += now(what.clock) - before;
    }
    return seconds / what.repeats;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double megabytesOf(const char *field)
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QRegularExpression line(QString(field) + ":\\s+(\\d+) kB");
    return line.match(QString::fromLatin1(status.readAll())).captured(1).toDouble() / 1024;
}

// Lets the peak begin anew.
void forgetPeakMemory()
{
    QFile references("/proc/self/clear_refs");
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}

QString milliseconds(double seconds) { return QString::number(seconds * 1000, 'f', seconds < 0.1 ? 2 : 0); }

}

Measurement measure(const Case &what, Crib &crib, bool isJudged, int rounds)
{
    Measurement result{&what, isJudged};
    std::vector<double> floors, ours, ratios;
    for (int round = 0; round <= rounds; ++round) {
        const double floor = what.floor.run ? secondsOf(what, what.floor, crib) : 1;
        const double before = megabytesOf("VmRSS");
        forgetPeakMemory();
        const double own = secondsOf(what, what.ours, crib);
        if (round == 0) {
            result.megabytes = std::max(0.0, megabytesOf("VmHWM") - before);
            continue;
        }
        floors.push_back(floor);
        ours.push_back(own);
        ratios.push_back(own / floor);
    }
    result.floorSeconds = what.floor.run ? median(floors) : 0;
    result.oursSeconds = median(ours);
    result.ratio = median(ratios);
    result.lowest = *std::min_element(ratios.begin(), ratios.end());
    result.highest = *std::max_element(ratios.begin(), ratios.end());
    return result;
}

QString Measurement::line() const
{
    const QString verdict = !isJudged ? QString("(%1)").arg(measured->scale)
        : isTooSlow()                 ? QString("FAIL")
        : ratio > measured->goal      ? QString("ok, above goal")
                                      : QString("ok");
    return QString("%1 %2 %3 %4 %5..%6 %7 %8 %9  ")
               .arg(measured->name, -18)
               .arg(milliseconds(floorSeconds), 10)
               .arg(milliseconds(oursSeconds), 10)
               .arg(ratio, 7, 'f', 2)
               .arg(lowest, 6, 'f', 2)
               .arg(highest, -6, 'f', 2)
               .arg(measured->goal, 5, 'f', 2)
               .arg(measured->hard, 6, 'f', 2)
               .arg(megabytes, 7, 'f', 1)
        + verdict;
}

QJsonObject Measurement::json() const
{
    return {{"name", measured->name},
            {"operation", measured->operation},
            {"floorSeconds", floorSeconds},
            {"oursSeconds", oursSeconds},
            {"ratio", ratio},
            {"lowest", lowest},
            {"highest", highest},
            {"goal", measured->goal},
            {"hard", measured->hard},
            {"megabytes", megabytes},
            {"judged", isJudged},
            {"failed", isTooSlow()}};
}
