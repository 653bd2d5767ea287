#include "bench/Crib.h"
#include "bench/Measurement.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTextStream>

#include <algorithm>
#include <memory>

namespace {

// A machine that was busy just then is no fault of the program's.
Measurement measureTwiceIfTooSlow(const Case &what, Crib &crib, bool isJudged, int rounds)
{
    const Measurement first = measure(what, crib, isJudged, rounds);
    if (!first.isTooSlow())
        return first;
    const Measurement second = measure(what, crib, isJudged, rounds);
    return second.ratio < first.ratio ? second : first;
}

}

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    QTextStream out(stdout), errors(stderr);

    QCommandLineParser options;
    options.setApplicationDescription("Measures the program's operations against the least they could cost.\n"
                                      "Ends with 1 when one is above its hard limit twice.");
    options.addHelpOption();
    options.addOptions({{"scale", "Crib to measure in: small, shop or max; shop when not given", "name", "shop"},
                        {"only", "Measure this case only", "case"},
                        {"server", "Measure on a server that holds a sample of the largest scale", "connection file"},
                        {"rounds", "Counted rounds; 7 when not given", "number", "7"},
                        {"json", "Write the figures to a file as well", "file"}});
    options.process(application);
    const auto scales = SampleCrib::scales();
    const auto scale = std::ranges::find(scales, options.value("scale"), &SampleCrib::Scale::name);
    const int rounds = options.value("rounds").toInt();
    const QString only = options.value("only");
    const bool onServer = options.isSet("server");
    const std::span<const Case> known = onServer ? serverCases() : allCases();
    const auto isWanted = [&](const Case &what) { return only.isEmpty() || only == what.name; };
    if (scale == scales.end() || rounds < 1 || std::ranges::none_of(known, isWanted)) {
        errors << "There is no such scale, case or number of rounds.\n";
        return 2;
    }

    QDir().mkpath(BENCH_CACHE);
    std::unique_ptr<Crib> crib;
    if (onServer) {
        crib = std::make_unique<Crib>(options.value("server"));
        out << "Qt " << qVersion() << ", on a server, " << rounds << " rounds after one\n";
    } else {
        crib = std::make_unique<Crib>(*scale, BENCH_CACHE);
        QString journal;
        crib->floor().read("PRAGMA journal_mode", [&](sqlite3_stmt *row) {
            journal = reinterpret_cast<const char *>(sqlite3_column_text(row, 0));
        });
        out << "SQLite " << sqlite3_libversion() << ", Qt " << qVersion() << ", journal mode " << journal << ", scale "
            << scale->name << ", " << rounds << " rounds after one\n";
    }
    out << "Times in ms, memory in MB; a case without a floor has seconds for a ratio.\n"
        << "case                    floor       ours   ratio lowest..highest  goal  hard  memory\n";
    QJsonArray figures;
    int status = 0;
    for (const Case &what : known) {
        if (!isWanted(what))
            continue;
        const bool isJudged = onServer || qstrcmp(what.scale, scale->name) == 0;
        const Measurement result = measureTwiceIfTooSlow(what, *crib, isJudged, rounds);
        out << result.line() << Qt::endl;
        figures.append(result.json());
        if (result.isTooSlow())
            status = 1;
    }

    if (options.isSet("json")) {
        QFile file(options.value("json"));
        if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(figures).toJson()) < 0) {
            errors << file.errorString() << '\n';
            return 2;
        }
    }
    return status;
}
