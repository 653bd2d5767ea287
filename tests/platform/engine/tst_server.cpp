#include "platform/engine/postgres/ServerConnection.h"
#include "tests/support/BothEngines.h"
#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"
#include "tests/support/TestServer.h"

#include <QRegularExpression>
#include <QScopedValueRollback>

#include <csignal>
#include <future>
#include <random>

/// What a server may refuse, and connections that end at any moment.
class TestServerFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_server.run("CREATE ROLE " + m_role + " LOGIN PASSWORD 'right'"); }
    void cleanupTestCase() { m_server.run("DROP ROLE " + m_role); }
    void init()
    {
        m_crib.emplace("CREATE TABLE Notes(ID INTEGER PRIMARY KEY AUTOINCREMENT, Deed LONG);"
                       "INSERT INTO Notes VALUES (1, -1)");
        (*m_crib)->executeNative("GRANT SELECT, UPDATE ON [Notes] TO " + m_role);
    }
    void cleanup()
    {
        (*m_crib)->executeNative("ROLLBACK");
        (*m_crib)->executeNative(
            QString("DROP OWNED BY %1; ALTER ROLE %1 RESET ALL; ALTER ROLE %1 CONNECTION LIMIT -1").arg(m_role));
    }

    void hasItsNumberAndWords_data()
    {
        // done before, what the connection file says instead, done meanwhile, the error
        const QString user = "user=.*", asRole = "user=SOMEBODY", database = "dbname=.*\nuser=.*";
        const QString account = "3029 Not a valid account name or password\\. \\(.*%1.*\\)";
        const QString failed = "3151 Connection to '.*/other\\.mdb' failed\\. \\(.*%1.*\\)";
        const QString withPassword = "dbname=with_password\nuser=SOMEBODY\npassfile=";
        row("a server that does not run", "", "port=.*", "port=1", "", failed.arg("No such file"));
        row("no such role", "", user, "user=nobody", "", account.arg("does not exist"));
        row("no password", "", database, withPassword + "absent", "", account.arg("no password supplied"));
        row("a wrong password", "", database, withPassword + "wrong", "",
            account.arg("password authentication failed"));
        row("no such database", "", database, "dbname=nowhere\nuser=SOMEBODY", "",
            "3024 Could not find file '.*/other\\.mdb'\\. \\(.*\\)");
        row("too many users", "ALTER ROLE SOMEBODY CONNECTION LIMIT 0", user, asRole, "",
            "3239 Too many active users\\. \\(.*\\)");
        row("functions of another version",
            "CREATE OR REPLACE FUNCTION vorlane_version() RETURNS integer LANGUAGE sql AS 'SELECT 99'", user, asRole,
            "", failed.arg("run vorlane-admin upgrade"));
        row("a table has gone", "", user, asRole, "DROP TABLE [Notes]", "3078 .*cannot find the input table.*");
        row("a right is missing", "REVOKE UPDATE ON [Notes] FROM SOMEBODY", user, asRole, "",
            "3033 You do not have the necessary permissions.*");
        row("read-only", "ALTER ROLE SOMEBODY SET default_transaction_read_only = on", user, asRole, "",
            "3027 Cannot update\\. Database or object is read-only\\.");
        row("a row that somebody holds", "", user, asRole, "BEGIN; UPDATE [Notes] SET [Deed] = 1",
            "3260 Could not update; currently locked by another user\\.");
        row("nothing is wrong", "", user, asRole, "", "0 ");
    }

    void hasItsNumberAndWords()
    {
        auto [before, from, to, meanwhile, error] = fetched<QString, QString, QString, QString, QString>();
        (*m_crib)->executeNative(before.replace("SOMEBODY", m_role));
        const QTemporaryDir folder;
        writeFile(folder.filePath("wrong"), "*:*:*:*:wrong\n");
        QFile::setPermissions(folder.filePath("wrong"), QFile::ReadOwner);
        QString lines = QString::fromUtf8(contentOf(m_crib->path())).replace(QRegularExpression(from), to);
        writeFile(folder.filePath("other.mdb"), lines.replace("SOMEBODY", m_role).toUtf8());
        QString text;
        const int number = errorOf(
            [&] {
                const auto other = Workspace::first().openDatabase(folder.filePath("other.mdb"));
                dontWaitForOthers(*other);
                (*m_crib)->executeNative(meanwhile);
                other->execute("UPDATE Notes SET Deed = 2 WHERE ID = 1");
            },
            &text);
        const QString said = QString("%1 %2").arg(number).arg(text);
        QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(error)).match(said).hasMatch(),
                 qPrintable(said));
    }

    // Each deed meets at most one cut, before, while or after it is done.
    void cutsLoseNothingAndRepeatNothing()
    {
        const QString backends = " FROM pg_stat_activity WHERE pid = ";
        std::mt19937 random(20260304);
        int outcomes[3] = {}; // done, nothing stored, not known
        for (int deed = 0; deed < 400; ++deed) {
            const auto rows = [&] {
                return (*m_crib)->openRecordset(QString("Select * from Notes where Deed = %1").arg(deed)).recordCount();
            };
            const QString backend = (*m_crib)->openNative("SELECT pg_backend_pid()").at(0, 0).toText();
            const bool cuts = random() % 2 == 0;
            std::future<void> cutter = std::async(std::launch::async, [&, wait = random() % 12] {
                for (unsigned i = 0; i < wait; ++i)
                    m_server.run("SELECT 1");
                if (cuts)
                    m_server.run("SELECT pg_terminate_backend(pid)" + backends + backend);
                while (cuts && !m_server.run("SELECT 1" + backends + backend).empty()) { }
            });
            const bool whole = deed % 2 == 0; // in a transaction
            const QString insert = QString("INSERT INTO Notes (Deed) VALUES (%1)").arg(deed);
            QString text;
            const int number = errorOf(
                [&] {
                    std::optional<Transaction> transaction;
                    if (whole)
                        transaction.emplace(**m_crib);
                    for (int i = 0; i <= whole; ++i)
                        (*m_crib)->execute(insert);
                    if (whole)
                        transaction->commit();
                },
                &text);
            rows(); // a reading is answered, whatever happens
            cutter.get();
            const int stored = rows();
            const int outcome = number == 0 ? 0 : text.endsWith("Nothing of the change was stored.") ? 1 : 2;
            ++outcomes[outcome];
            QVERIFY2(number == 0 || number == EngineError::connectionFailed, qPrintable(text));
            QVERIFY2(outcome < 2 || text.endsWith("is not known: look before you repeat it."), qPrintable(text));
            QVERIFY2(stored == 1 + whole || (stored == 0 && outcome > 0), qPrintable(text));
            QVERIFY2(stored == 0 || outcome != 1, qPrintable(text));
        }
        qInfo("done %d, not stored %d, not known %d", outcomes[0], outcomes[1], outcomes[2]);
        QVERIFY(outcomes[0] > 100 && outcomes[1] > 0 && outcomes[2] > 0);
    }

    // Others would be answered, so that only time tells.
    void aSilentServerHoldsNobody()
    {
        const auto backend = pid_t((*m_crib)->openNative("SELECT pg_backend_pid()").at(0, 0).toInteger());
        const QScopedValueRollback impatience(ServerConnection::longestSilence, 200);
        kill(backend, SIGSTOP);
        QString text;
        QCOMPARE(errorOf([&] { (*m_crib)->execute("UPDATE Notes SET Deed = 7"); }, &text),
                 int(EngineError::connectionFailed));
        const qint64 deed = (*m_crib)->openRecordset("Select * from Notes").field(u"Deed").toInteger();
        kill(backend, SIGCONT);
        QVERIFY2(text.endsWith("is not known: look before you repeat it."), qPrintable(text));
        QCOMPARE(deed, qint64(-1));
    }

    void tellsOnlyTheirOwnCribOfRowsThatChanged()
    {
        const QTemporaryDir folder;
        (*m_crib)->executeNative("CREATE SCHEMA hall2");
        writeFile(folder.filePath("hall2.mdb"), contentOf(m_crib->path()) + "schema=hall2\n");
        const auto hall2 = Workspace::first().openDatabase(folder.filePath("hall2.mdb"));
        hall2->createTable({.name = "Notes", .columns = {{"Deed", dialect::ValueKind::Long}}});
        const auto other = Workspace::first().openDatabase(m_crib->path());
        (*m_crib)->changesSocket();
        const auto told = [&] {
            (*m_crib)->openRecordset("Select * from Notes").recordCount(); // brings along what was said before
            return (*m_crib)->changesOfOthers();
        };
        QCOMPARE(told(), QStringList());
        hall2->execute("INSERT INTO Notes VALUES (1)");
        other->execute("UPDATE Notes SET Deed = 2 WHERE ID = 99");
        QCOMPARE(told(), QStringList());
        other->execute("UPDATE Notes SET Deed = 2 WHERE ID = 1");
        QCOMPARE(told(), QStringList("Notes"));
    }

private:
    TestServer m_server;
    const QString m_role = QString("attendant_%1").arg(QCoreApplication::applicationPid());
    std::optional<EngineFile> m_crib;
};

QTEST_GUILESS_MAIN(TestServerFaults)
#include "tst_server.moc"
