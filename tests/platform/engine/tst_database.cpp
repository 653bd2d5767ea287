#include "tests/support/EngineFile.h"

#include <QTest>

#include <sqlite3.h>

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

    void cleanup() { m_database.reset(); }

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
        QCOMPARE(count(), 3);
        QVERIFY_EXCEPTION_THROWN(deleteTypes(true, true), EngineError);
        QCOMPARE(count(), 3);
        deleteTypes(false, true);
        QCOMPARE(count(), 2);
    }

    void readScopeHoldsTheFileForReading()
    {
        sqlite3 *other = nullptr;
        QCOMPARE(sqlite3_open(m_database->path().toUtf8().constData(), &other), SQLITE_OK);
        const auto otherWrites = [&] {
            return sqlite3_exec(other, "UPDATE Types SET Parent = Parent", nullptr, nullptr, nullptr) == SQLITE_OK;
        };
        {
            const ReadScope outer(**m_database);
            {
                const ReadScope inner(**m_database);
                QVERIFY(!otherWrites());
            }
            QVERIFY(!otherWrites());
            (*m_database)->execute("INSERT INTO Types (Description) VALUES ('Taps')");
            QVERIFY(!otherWrites());
        }
        QVERIFY(otherWrites());
        QCOMPARE(count(), 4);
        sqlite3_close(other);
    }

    void statementsOfOneShapeAreTranslatedOnce()
    {
        (*m_database)->openRecordset("Select Description from Types where ID = 1 and Description <> 'a'");
        (*m_database)->execute("UPDATE Types SET Parent = 0, Description = 'a' WHERE ID = 0");
        const qint64 before = (*m_database)->counters().prepared;
        for (int id = 1; id <= 3; ++id) {
            const QString number = QString::number(id);
            const QString statement = "Select Description from Types where ID = %1 and Description <> 'It''s %1'";
            const QString expected = id == 1 ? "Drills" : id == 2 ? "HSS" : "Carbide";
            QCOMPARE((*m_database)->openRecordset(statement.arg(number)).text(u"Description"), expected);
            (*m_database)
                ->execute(QString("UPDATE Types SET Parent = %1, Description = 'type %1' WHERE ID = %1").arg(number));
        }
        QCOMPARE((*m_database)->counters().prepared, before);
        QCOMPARE((*m_database)
                     ->openRecordset("Select ID from Types where Description = 'type ' & ID and Parent = ID")
                     .recordCount(),
                 3);
    }

    void selectsByNumberAreTranslatedOnce()
    {
        (*m_database)->execute("INSERT INTO Types (Description, Parent) VALUES ('Taps', -7)");
        const SelectByNumber below(**m_database, "SELECT * FROM Types WHERE Parent = 0 ORDER BY Description");
        const qint64 prepared = (*m_database)->counters().prepared;
        const Recordset first = below.open(1);
        QCOMPARE(below.open(-7).text(u"Description"), "Taps");
        QCOMPARE(below.open(5).recordCount(), 0);
        QCOMPARE(first.recordCount(), 2);
        QCOMPARE(first.text(u"Description"), "Carbide");
        QCOMPARE((*m_database)->counters().prepared, prepared);
        QVERIFY_THROWS_EXCEPTION(EngineError, SelectByNumber(**m_database, "DELETE FROM Types WHERE ID = 1"));
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

    void newTablesAreKnownAtOnce()
    {
        QVERIFY_EXCEPTION_THROWN(count("Locations"), EngineError);
        (*m_database)->executeNative("CREATE TABLE Locations(ID INTEGER PRIMARY KEY, Description TEXT)");
        QCOMPARE(count("Locations"), 0);
        const Recordset before = (*m_database)->openRecordset("Select * from Locations");
        (*m_database)
            ->executeNative("ALTER TABLE Locations ADD COLUMN Parent LONG; INSERT INTO Locations VALUES (1, 'a', 0)");
        QCOMPARE((*m_database)->openRecordset("Select * from Locations").fieldCount(), 3);
        QCOMPARE(before.recordCount(), 1);
        (*m_database)->executeNative("DROP TABLE Locations");
        QVERIFY_EXCEPTION_THROWN(count("Locations"), EngineError);
    }

private:
    int count(const QString &table = "Types") const
    {
        return (*m_database)->openRecordset("Select * from " + table).recordCount();
    }

    std::optional<EngineFile> m_database;
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
