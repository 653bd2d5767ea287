#include "platform/engine/Workspace.h"

#include <QTemporaryDir>
#include <QTest>

class TestDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void statementsReadAndWrite();
    void addedRowsAreStoredWithoutReadingTheTable();
    void rowsChangeThroughTheRecordset();
    void firstMatchIsFound();
    void transactionIsRolledBackUnlessCommitted();
    void backupIsACopy();

private:
    QString file(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Database> m_database;
};

void TestDatabase::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_database = Workspace::first().createDatabase(file("crib.mdb"));
    m_database->executeNative("CREATE TABLE Types(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT, Parent LONG);"
                              "CREATE TABLE Tools(ID INTEGER PRIMARY KEY AUTOINCREMENT, Type LONG REFERENCES Types(ID),"
                              " Description TEXT NOT NULL, PricePer CURRENCY, Out YESNO NOT NULL DEFAULT 0);"
                              "CREATE TABLE Reports(Name TEXT, Module TEXT, \"Default\" YESNO DEFAULT 0)");
}

void TestDatabase::cleanup()
{
    m_database.reset();
    m_folder.reset();
}

void TestDatabase::statementsReadAndWrite()
{
    m_database->execute("INSERT INTO Types (Description, Parent) VALUES ('Drills', 0)");
    QCOMPARE(m_database->execute("insert into TOOLS (type, description, priceper) values (1, 'Jobber', 12.34567)"), 1);
    const Recordset tools = m_database->openRecordset(
        "Select tools.*, types.description as typedesc from tools, types where tools.type = types.id and Out = false");
    QCOMPARE(tools.recordCount(), 1);
    QCOMPARE(tools.text(u"PRICEPER"), "12.3457");
    QCOMPARE(tools.text(u"typeDesc"), "Drills");
    QCOMPARE(tools.field(u"out"), Value(0));
}

void TestDatabase::addedRowsAreStoredWithoutReadingTheTable()
{
    m_database->execute("insert into reports (name) values ('a')");
    const qint64 before = m_database->counters().rowsFetched;
    Recordset reports = m_database->openRecordset("Select * from Reports");
    reports.addNew();
    reports.setField(u"Name", QString("b"));
    reports.setField(u"default", true);
    reports.update();
    QCOMPARE(m_database->counters().rowsFetched - before, 1); // the new row itself
    QCOMPARE(m_database->openRecordset("select name from reports where default = true").text(u"Name"), "b");
}

void TestDatabase::rowsChangeThroughTheRecordset()
{
    m_database->execute("insert into reports (name) values ('a')");
    m_database->execute("insert into reports (name) values ('a')");
    Recordset reports = m_database->openRecordset("Select * from Reports order by name");
    reports.moveNext();
    reports.edit();
    reports.setField(u"Module", QString("Tools"));
    reports.update();
    QCOMPARE(reports.text(u"module"), "Tools");
    QCOMPARE(m_database->openRecordset("select * from reports where module = 'tools'").recordCount(), 1);
    reports.remove();
    QVERIFY(reports.atEnd());
    QCOMPARE(m_database->openRecordset("select * from reports").recordCount(), 1);
}

void TestDatabase::firstMatchIsFound()
{
    m_database->execute("insert into reports values ('a', 'Tools CheckedOut', 0)");
    m_database->execute("insert into reports values ('b', 'Tools CheckedOut', -1)");
    Recordset reports = m_database->openRecordset("Select * from Reports");
    QVERIFY(reports.findFirst("Module = 'tools checkedout' and Default = true"));
    QCOMPARE(reports.text(u"Name"), "b");
    QVERIFY(!reports.findFirst("name = 'c'"));
    QCOMPARE(reports.text(u"Name"), "b");
}

void TestDatabase::transactionIsRolledBackUnlessCommitted()
{
    const ReadScope reading(*m_database);
    {
        Transaction transaction(*m_database);
        m_database->execute("insert into types (description) values ('x')");
    }
    QVERIFY(m_database->openRecordset("select id from types").isEmpty());
    {
        Transaction transaction(*m_database);
        m_database->execute("insert into types (description) values ('x')");
        transaction.commit();
    }
    QCOMPARE(m_database->openRecordset("select id from types").recordCount(), 1);
}

void TestDatabase::backupIsACopy()
{
    m_database->execute("insert into types (description) values ('x')");
    m_database->backupTo(file("copy.mdb"));
    QCOMPARE(Workspace::first().openDatabase(file("copy.mdb"))->openRecordset("select * from types").recordCount(), 1);
}

QTEST_GUILESS_MAIN(TestDatabase)
#include "tst_database.moc"
