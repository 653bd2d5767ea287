#include "tests/support/BothEngines.h"
#include "tests/support/EngineFile.h"

#include <QTest>

class TestDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database.emplace("CREATE TABLE Types(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT, Parent LONG);"
                           "INSERT INTO Types VALUES (1, 'Drills', 0), (2, 'HSS', 1), (3, 'Carbide', 1);"
                           "CREATE TABLE Tools(ID INTEGER PRIMARY KEY, Type LONG REFERENCES Types(ID));"
                           "INSERT INTO Tools VALUES (1, 1)");
    }

    void transactionsEndWhole()
    {
        const ReadScope reading(**m_database); // as during a search
        const auto deleteTypes = [this](bool all, bool commit) {
            Transaction transaction(**m_database);
            (*m_database)->execute("DELETE FROM Types WHERE ID = 2");
            if (all)
                (*m_database)->execute("DELETE FROM Types WHERE ID = 1");
            QCOMPARE(count(), 2);
            if (commit)
                transaction.commit();
        };
        deleteTypes(false, false);
        QVERIFY_EXCEPTION_THROWN(deleteTypes(true, true), EngineError);
        QCOMPARE(count(), 3);
        deleteTypes(false, true);
        QCOMPARE(count(), 2);
    }

    // A window that lives on during a change may end it, and comes no nearer to the database.
    void aPulseEndsAChange()
    {
        (*m_database)->executeNative("CREATE TABLE [Many] (N INTEGER)");
        (*m_database)
            ->executeNative("INSERT INTO [Many] SELECT 1 FROM [Types] A, [Types] B, [Types] C, [Types] D, "
                            "[Types] E, [Types] F, [Types] G, [Types] H, [Types] I");
        bool ends = true;
        int error = 0, storing = 0;
        const Pulse pulse(**m_database, [&](Pulse::Phase phase) {
            storing += phase == Pulse::Storing;
            error = errorOf([this] { count(); });
            if (std::exchange(ends, false))
                throw std::runtime_error("enough");
        });
        const auto change = [this] {
            Transaction transaction(**m_database);
            (*m_database)->execute("DELETE FROM Many WHERE N = 1");
            transaction.commit();
        };
        QVERIFY_EXCEPTION_THROWN(change(), std::runtime_error);
        QCOMPARE(error, EngineError::lockedFile);
        QCOMPARE((*m_database)->openRecordset("SELECT Count(*) FROM Many").field(0).toInteger(), 19683);
        QCOMPARE(storing, 0);
        change();
        QVERIFY(storing > 0);
        QVERIFY((*m_database)->openRecordset("SELECT * FROM Many").isEmpty());
    }

    // A file has readers keep writers out; a server shows them one moment.
    void readersSeeOneMoment()
    {
        const auto other = otherDesk();
        {
            const ReadScope outer(**m_database);
            {
                const ReadScope inner(**m_database);
                QCOMPARE(count(" where Parent = 5"), 0);
                QCOMPARE(write(*other), ServerDatabase::isWanted());
            }
            QCOMPARE(write(*other), ServerDatabase::isWanted());
            QCOMPARE(count(" where Parent = 5"), 0);
        }
        QVERIFY(write(*other));
        QCOMPARE(count(" where Parent = 5"), 3);
    }

    void otherWritersAreKeptOut()
    {
        const auto other = otherDesk();
        {
            const Transaction begun(**m_database); // what it looks at first must still be so when it writes
            QCOMPARE(count(), 3);
            QVERIFY(!write(*other));
        }
        QVERIFY(write(*other));
    }

    void statementsOfOneShapeAreTranslatedOnce()
    {
        (*m_database)->openRecordset("Select ID from Types where ID = 1 and Description <> 'a'");
        (*m_database)->execute("UPDATE Types SET Parent = 0, Description = 'a' WHERE ID = 0");
        const qint64 before = (*m_database)->counters().prepared;
        for (int id = 1; id <= 3; ++id) {
            const QString statement = "Select ID from Types where ID = %1 and Description <> 'It''s %1'";
            QCOMPARE((*m_database)->openRecordset(statement.arg(id)).field(u"ID"), Value(id));
            const QString change = "UPDATE Types SET Parent = %1, Description = 'type %1' WHERE ID = %1";
            (*m_database)->execute(change.arg(id));
        }
        QCOMPARE((*m_database)->counters().prepared, before);
        QCOMPARE(count(" where Description = 'type ' & ID and Parent = ID"), 3);
    }

    void selectsByNumberAreTranslatedOnce()
    {
        (*m_database)->execute("INSERT INTO Types (Description, Parent) VALUES ('Taps', -7)");
        SelectByNumber below(**m_database, "SELECT * FROM Types WHERE Parent = 0 ORDER BY Description");
        const qint64 prepared = (*m_database)->counters().prepared;
        const Recordset first = below.open(1);
        QCOMPARE(below.open(-7).text(u"Description"), "Taps");
        QCOMPARE(first.recordCount(), 2);
        QCOMPARE((*m_database)->counters().prepared, prepared);
    }

    void keptStatementsAreBounded()
    {
        const qint64 before = (*m_database)->counters().prepared;
        for (int i = 0; i <= 600; ++i) // more than are kept; the first one goes, the last one stays
            (*m_database)->openRecordset(QString("Select ID as ID%1 from Types where ID = 2").arg(i % 600));
        QCOMPARE((*m_database)->counters().prepared - before, 601);
        (*m_database)->openRecordset("Select ID as ID599 from Types where ID = 3");
        QCOMPARE((*m_database)->counters().prepared - before, 601);
    }

private:
    int count(const QString &where = {}) const
    {
        return (*m_database)->openRecordset("Select * from Types" + where).recordCount();
    }

    std::unique_ptr<Database> otherDesk() const
    {
        auto other = Workspace::first().openDatabase(m_database->path());
        dontWaitForOthers(*other);
        return other;
    }
    static bool write(Database &database)
    {
        return errorOf([&] {
                   Transaction transaction(database);
                   database.execute("UPDATE Types SET Parent = 5");
                   transaction.commit();
               })
            == 0;
    }

    std::optional<EngineFile> m_database;
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
