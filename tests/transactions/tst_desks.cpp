#include "platform/system/Clock.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "transactions/AtomicChange.h"
#include "transactions/Lending.h"

#include <QElapsedTimer>
#include <QHash>
#include <QProcess>
#include <QTextStream>

#include <random>

namespace {

constexpr int desks = 3;
constexpr int tools = 12; // few, so that the desks are in each other's way

QString momentOf(int desk, int step)
{
    return QDateTime({2026, 1, 1}, {0, 0}).addSecs(desk * 1'000'000 + step).toString("yyyy-MM-dd hh:mm:ss");
}

/// Lends and takes back at random until its input ends, each deed at a moment of its own, and says what came of it.
int workAsDesk(const QString &path, int desk)
{
    QTextStream out(stdout);
    std::mt19937 random(desk);
    for (bool open = false; !open;) {
        try {
            Session::open(path);
            open = true;
        } catch (const EngineError &) { // the others leave no gap
        }
    }
    for (int step = 0;; ++step) {
        const QString moment = momentOf(desk, step);
        Clock::setSource([&] { return QDateTime::fromString(moment, "yyyy-MM-dd hh:mm:ss"); });
        const auto tool = qint16(random() % tools + 1);
        QString column = "DateOut";
        AtomicChange change;
        try {
            const Lending::OpenLoan loan = Lending::openLoan(tool);
            column = loan.id > 0 ? "DateIn" : "DateOut";
            change = AtomicChange::attempt([&] {
                if (loan.id > 0)
                    Lending::takeBack(tool, loan.id);
                else
                    Lending::lend({tool, 12500, 4, "21"});
            });
        } catch (const EngineError &error) {
            change = {AtomicChange::Failed, error.text(), error.number()};
        }
        out << column << '|' << moment << '|' << change.outcome << '|' << change.number << '|' << change.why
            << Qt::endl;
        if (out.status() != QTextStream::Ok)
            return 0;
    }
}

}

/// Several desks at one crib, which their connections, or they themselves, may leave at any moment. On a server
/// VORLANE_DESKS_SECONDS makes them work longer.
class TestDesks : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLostAndNothingDoneTwice()
    {
        QStringList rows;
        for (int tool = 0; tool < tools; ++tool)
            rows.append(QString("1,1,'Tool %1'").arg(tool));
        m_crib.insert("Tools (Type,Location,Description)", rows);
        const int seconds = qEnvironmentVariableIntValue("VORLANE_DESKS_SECONDS");
        constexpr int deeds = 400;

        QProcess workers[desks];
        for (int desk = 0; desk < desks; ++desk)
            workers[desk].start(QCoreApplication::applicationFilePath(),
                                {"--desk", m_crib.path(), QString::number(desk)});
        QElapsedTimer time;
        time.start();
        QList<QByteArrayList> told(desks);
        for (int round = 0, done = 0; done < deeds || time.elapsed() < seconds * 1000; ++round) {
            for (int desk = 0; desk < desks; ++desk) {
                workers[desk].waitForReadyRead(100);
                while (workers[desk].canReadLine()) {
                    told[desk].append(workers[desk].readLine().trimmed());
                    ++done;
                }
                QVERIFY2(workers[desk].state() == QProcess::Running, workers[desk].readAllStandardError());
            }
            if (ServerDatabase::isWanted() && round % 3 == 2)
                cutConnections();
            QVERIFY(time.elapsed() < (seconds + 120) * 1000);
        }
        for (int desk = 0; desk < desks; ++desk) {
            workers[desk].kill();
            workers[desk].waitForFinished();
            while (workers[desk].canReadLine())
                told[desk].append(workers[desk].readLine().trimmed());
        }

        QHash<QString, int> stored;
        for (const char *column : {"DateOut", "DateIn"})
            for (const QString &moment : m_crib.rows(QString("Select %1 from CheckOutIn").arg(column)))
                ++stored[column + moment];
        int outcomes[3] = {}, unknown = 0;
        for (const QByteArrayList &deedsOfDesk : told) {
            for (const QByteArray &deed : deedsOfDesk) {
                const QStringList parts = QString::fromUtf8(deed).split('|');
                const int outcome = parts[2].toInt();
                ++outcomes[outcome];
                if (parts[4].contains("is not known"))
                    ++unknown;
                else
                    QVERIFY2(stored.value(parts[0] + parts[1]) == (outcome == AtomicChange::Done), deed);
                QVERIFY2(outcome == AtomicChange::Done || parts[4].size() > 10, deed); // words, whatever it was
            }
        }
        qInfo("done %d, refused %d, failed %d, of these unknown %d", outcomes[0], outcomes[1], outcomes[2], unknown);
        QVERIFY(outcomes[AtomicChange::Done] > 0);
        QProcess check;
        check.start(PROGRAM_BIN "/vorlane-admin", {"check", m_crib.path()});
        QVERIFY(check.waitForFinished());
        QVERIFY2(check.exitCode() == 0, check.readAllStandardOutput() + check.readAllStandardError());
    }

private:
    void cutConnections()
    {
        try {
            Workspace::first()
                .openDatabase(m_crib.path())
                ->openNative("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = "
                             "current_database() AND pid <> "
                             "pg_backend_pid() AND random() < 0.4");
        } catch (const EngineError &) { // somebody restarts the server
        }
    }

    CribDatabase m_crib;
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--desk")
        return workAsDesk(arguments.value(2), arguments.value(3).toInt());
    TestDesks test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_desks.moc"
