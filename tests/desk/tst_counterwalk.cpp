#include "common/ProgramState.h"
#include "desk/Desk.h"
#include "platform/system/Clock.h"
#include "platform/text/Format.h"
#include "tests/support/CribDatabase.h"
#include "transactions/AtomicChange.h"

#include <QElapsedTimer>
#include <QHash>
#include <QProcess>
#include <QTest>
#include <QTextStream>

#include <random>

namespace {

constexpr int tools = 12; // few, so that the three are in each other's way
constexpr int workers = 3;

void openCrib(const QString &path)
{
    for (bool open = false; !open;) {
        try {
            Session::open(path);
            dontWaitForDisk(Session::database()); // processes die here, not the machine
            dontWaitForOthers(Session::database());
            open = true;
        } catch (const EngineError &) { // the others leave no gap
        }
    }
}

/// Each scan and deed has a moment of its own, by which it is found again in the crib. Those of all workers go on at
/// one pace.
QDateTime momentOf(int worker, int step) { return QDateTime({2026, 1, 1}, {0, 0}).addSecs(step * 30 + worker * 10); }

/// Scans at random, and says what was done.
int workAsDesk(int worker, int step)
{
    ProgramState::SuiteInstalled = true;
    std::mt19937 random(worker * 1000 + step);
    QTextStream out(stdout);
    Desk desk;
    const QStringList others{"E17",  "E21",  "E18", "J1250", "J12500", "O11", "OUT", "IN",     "DONE",
                             "UNDO", "UNDO", "E21", "J1250", "gauge",  "L1",  "T99", "T1\x03", "R1"};
    for (;; ++step) {
        Clock::setSource([&] { return momentOf(worker, step); });
        const bool isTool = random() % 3 != 0;
        const QString text = isTool ? QString("T%1").arg(random() % tools + 1) : others[random() % others.size()];
        QList<Answer> answers = desk.scan(text);
        while (desk.isWaiting())
            answers += desk.goOn();
        for (const Answer &answer : answers)
            if (answer.words.size() < 5)
                return 1; // an answer is words, whatever happened
        for (const DeedLine &line : desk.takeLines())
            out << line.what << '|' << Format::generalDate(line.when) << '|' << line.tool.mid(1).section(' ', 0, 0)
                << '\n';
        out << "step|" << step << '|' << Qt::endl;
        if (out.status() != QTextStream::Ok)
            return 0;
    }
}

/// Lends, takes back and moves as the explorer's dialogs do, and now and then keeps the crib to itself for a while.
int workAsExplorer(int worker, int step)
{
    std::mt19937 random(worker * 1000 + step);
    QTextStream out(stdout);
    for (;; ++step) {
        Clock::setSource([&] { return momentOf(worker, step); });
        const auto tool = qint16(random() % tools + 1);
        QString what = "Out";
        try {
            const Lending::OpenLoan loan = Lending::openLoan(tool);
            what = loan.id > 0 ? "Back" : "Out";
            const AtomicChange change = AtomicChange::attempt([&] {
                if (loan.id > 0)
                    Lending::takeBack(tool, loan.id);
                else
                    Lending::lend({tool, 12500, 4, "21"});
                for (int held = random() % 20 == 0 ? 2000 : 0; held > 0; --held)
                    openRecordset("Select Count(*) from CheckOutIn");
            });
            if (change.outcome == AtomicChange::Done)
                out << what << '|' << Format::generalDate(Clock::now()) << '|' << tool << '\n';
        } catch (const EngineError &) { // locked
        }
        out << "step|" << step << '|' << Qt::endl;
        if (out.status() != QTextStream::Ok)
            return 0;
    }
}

}

/// Two desks and an explorer at one crib, each of which may be killed at any moment. VORLANE_WALK_SECONDS makes them
/// work longer.
class TestCounterWalk : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLostAndNothingDoneTwice()
    {
        QStringList rows;
        for (int tool = 0; tool < tools; ++tool)
            rows.append(QString("1,1,'Tool %1'").arg(tool));
        m_crib.insert("Tools (Type,Location,Description)", rows);
        const int seconds = qEnvironmentVariableIntValue("VORLANE_WALK_SECONDS");
        constexpr int fewSteps = 1500;

        std::mt19937 random(1);
        for (int worker = 0; worker < workers; ++worker)
            start(worker);
        QElapsedTimer time;
        time.start();
        int kills = 0;
        for (int turn = 1; m_steps < fewSteps || time.elapsed() < seconds * 1000; ++turn) {
            for (int worker = 0; worker < workers; ++worker) {
                m_processes[worker].waitForReadyRead(50);
                listen(worker);
                QVERIFY2(m_processes[worker].state() == QProcess::Running, m_processes[worker].readAllStandardError());
            }
            if (turn % 5 == 0) {
                const int worker = int(random() % workers);
                stop(worker);
                start(worker);
                ++kills;
            }
            QVERIFY(time.elapsed() < (seconds + 120) * 1000);
        }
        for (int worker = 0; worker < workers; ++worker)
            stop(worker);

        QHash<QString, int> stored;
        for (const auto &[column, what] : {std::pair("DateOut", "Out|"), {"DateIn", "Back|"}})
            for (const QString &deed : m_crib.rows(QString("Select %1,Tool_Id from CheckOutIn").arg(column)))
                ++stored[what + deed];
        int deeds = 0;
        for (const QStringList &told : m_told)
            for (const QString &deed : told) {
                QVERIFY2(stored.value(deed) == 1, qPrintable(deed));
                ++deeds;
            }
        for (const QString &undone : std::as_const(m_undone))
            QVERIFY2(stored.value(undone) == 0, qPrintable(undone));
        qInfo("%d steps, %d deeds, %d undone, %d killed", m_steps, deeds, int(m_undone.size()), kills);
        QVERIFY(deeds > 20);
        QProcess check;
        check.start(PROGRAM_BIN "/vorlane-admin", {"check", m_crib.path()});
        QVERIFY(check.waitForFinished());
        QVERIFY2(check.exitCode() == 0, check.readAllStandardOutput() + check.readAllStandardError());
    }

private:
    void start(int worker)
    {
        m_processes[worker].start(
            QCoreApplication::applicationFilePath(),
            {"--worker", m_crib.path(), QString::number(worker), QString::number(m_lastStep[worker] + 1)});
    }
    void stop(int worker)
    {
        m_processes[worker].kill();
        m_processes[worker].waitForFinished();
        listen(worker);
        // What the killed one did next it may not have told: a deed at a moment that is nobody else's, or that it undid
        // the last one.
        ++m_lastStep[worker];
        QStringList &told = m_told[worker];
        for (const QString moment = told.isEmpty() ? QString() : told.last().section('|', 1, 1);
             !told.isEmpty() && told.last().section('|', 1, 1) == moment;)
            told.removeLast();
    }
    void listen(int worker)
    {
        while (m_processes[worker].canReadLine()) {
            const QStringList parts = QString::fromUtf8(m_processes[worker].readLine()).trimmed().split('|');
            if (parts[0] == "step") {
                m_lastStep[worker] = parts[1].toInt();
                ++m_steps;
                continue;
            }
            const QString what = parts[0].section(": ", -1);
            QStringList &told = m_told[worker];
            if (what == parts[0]) {
                told.append(parts.join('|'));
                continue;
            }
            const auto isUndone = [&](const QString &deed) {
                return deed.startsWith(what + '|') && deed.endsWith('|' + parts[2]);
            };
            if (const auto last = std::find_if(told.rbegin(), told.rend(), isUndone); last != told.rend()) {
                m_undone.append(*last);
                told.erase(std::next(last).base());
            }
        }
    }

    CribDatabase m_crib;
    QProcess m_processes[workers];
    int m_lastStep[workers] = {-1, -1, -1};
    QStringList m_told[workers]; ///< deeds as "Out|moment|tool"
    QStringList m_undone;
    int m_steps = 0;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--worker") {
        openCrib(arguments.value(2));
        const int worker = arguments.value(3).toInt(), step = arguments.value(4).toInt();
        return worker == workers - 1 ? workAsExplorer(worker, step) : workAsDesk(worker, step);
    }
    // A long walk is longer than a test may be otherwise.
    const int seconds = qEnvironmentVariableIntValue("VORLANE_WALK_SECONDS");
    if (seconds > 0)
        qputenv("QTEST_FUNCTION_TIMEOUT", QByteArray::number((seconds + 300) * 1000));
    TestCounterWalk test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_counterwalk.moc"
