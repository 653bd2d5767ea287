#include "platform/engine/Workspace.h"

#include <QTemporaryDir>
#include <QTest>

class TestRecordset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void movesThroughItsRows();
    void emptyOne();
    void valuesKeepTheirKinds_data();
    void valuesKeepTheirKinds();
    void fieldsByName();
    void addingNeverReadsTheTable();
    void addedRowsTakeTheirPlace();
    void rowsThatLookAlikeChangeOneByOne();
    void removedRowsMakeWay();
    void changesAreRefused_data();
    void changesAreRefused();
    void rowThatIsGone();
    void findsTheFirstMatch_data();
    void findsTheFirstMatch();
    void criteriaMeanWhatTheyMeanBehindWhere();

private:
    Recordset open(const QString &statement) { return m_database->openRecordset(statement); }
    QStringList names() { return column("Select Name from Reports order by Name"); }
    QStringList column(const QString &statement);
    template<typename Action>
    int errorOf(Action action);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Database> m_database;
};

void TestRecordset::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_database = Workspace::first().createDatabase(m_folder->filePath("crib.mdb"));
    m_database->executeNative(
        "BEGIN; CREATE TABLE Types(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT NOT NULL);"
        "INSERT INTO Types VALUES (1, 'Drills'), (2, 'Taps');"
        "CREATE TABLE Tools(ID INTEGER PRIMARY KEY AUTOINCREMENT, Type LONG REFERENCES Types(ID), Description TEXT,"
        " PricePer CURRENCY, DateIn DATETIME, Out YESNO NOT NULL DEFAULT 0);"
        "INSERT INTO Tools VALUES (1, 1, 'Jobber', 12.5, '2026-03-04 13:05:09', -1);"
        "CREATE TABLE Reports(Name TEXT, Module TEXT, \"Default\" YESNO NOT NULL DEFAULT 0);"
        "INSERT INTO Reports VALUES ('a', 'Tools CheckedOut', 0), ('b', 'tools checkedout', -1), ('c', 'Junk Tools', "
        "0),"
        " ('c', 'Junk Tools', 0), ('d', NULL, 0); COMMIT");
}

void TestRecordset::cleanup()
{
    m_database.reset();
    m_folder.reset();
}

QStringList TestRecordset::column(const QString &statement)
{
    QStringList texts;
    for (Recordset rows = open(statement); !rows.atEnd(); rows.moveNext())
        texts.append(rows.field(0).toText());
    return texts;
}

template<typename Action>
int TestRecordset::errorOf(Action action)
{
    try {
        action();
        return 0;
    } catch (const EngineError &error) {
        return error.number();
    }
}

void TestRecordset::movesThroughItsRows()
{
    Recordset rows = open("Select Name from Reports order by Name");
    QCOMPARE(rows.recordCount(), 5);
    QCOMPARE(rows.text(u"Name"), "a");
    rows.movePrevious();
    QVERIFY(rows.atBeginning() && !rows.atEnd());
    QCOMPARE(errorOf([&] { rows.field(0); }), EngineError::noCurrentRecord);
    QCOMPARE(errorOf([&] { rows.movePrevious(); }), EngineError::noCurrentRecord);
    rows.moveLast();
    QCOMPARE(rows.text(u"Name"), "d");
    QCOMPARE(rows.position(), 4);
    rows.moveNext();
    QVERIFY(rows.atEnd() && !rows.atBeginning());
    QCOMPARE(errorOf([&] { rows.field(0); }), EngineError::noCurrentRecord);
    QCOMPARE(errorOf([&] { rows.moveNext(); }), EngineError::noCurrentRecord);
    rows.setPosition(1);
    QCOMPARE(rows.text(u"Name"), "b");
    QCOMPARE(errorOf([&] { rows.setPosition(5); }), EngineError::noCurrentRecord);
    rows.moveFirst();
    QCOMPARE(rows.position(), 0);
    QCOMPARE(rows.at(4, 0).toText(), "d");
    QCOMPARE(errorOf([&] { rows.at(5, 0); }), EngineError::noCurrentRecord);
}

void TestRecordset::emptyOne()
{
    Recordset rows = open("Select * from Reports where Name = 'none'");
    QVERIFY(rows.isEmpty() && rows.atBeginning() && rows.atEnd());
    QCOMPARE(rows.fieldCount(), 3);
    QCOMPARE(errorOf([&] { rows.moveFirst(); }), EngineError::noCurrentRecord);
    QCOMPARE(errorOf([&] { rows.moveLast(); }), EngineError::noCurrentRecord);
    QCOMPARE(errorOf([&] { rows.field(u"Name"); }), EngineError::noCurrentRecord);
    QCOMPARE(errorOf([&] { rows.edit(); }), EngineError::noCurrentRecord);
    QVERIFY(!rows.findFirst("Name = 'a'"));
}

void TestRecordset::valuesKeepTheirKinds_data()
{
    QTest::addColumn<QString>("native");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("nothing") << "NULL"
                             << "" << 0.0;
    QTest::newRow("zero") << "0"
                          << "0" << 0.0;
    QTest::newRow("below zero") << "-1"
                                << "-1" << -1.0;
    QTest::newRow("a large number") << "9223372036854775807"
                                    << "9223372036854775807" << 9223372036854775807.0;
    QTest::newRow("the smallest number") << "-9223372036854775807 - 1"
                                         << "-9223372036854775808" << -9223372036854775808.0;
    QTest::newRow("a fraction") << "-12.375"
                                << "-12.375" << -12.375;
    QTest::newRow("an empty text") << "''"
                                   << "" << 0.0;
    QTest::newRow("a text") << QString::fromUtf8("'Äxte 𐐀'") << QString::fromUtf8("Äxte 𐐀") << 0.0;
    QTest::newRow("a text that is a number") << "' 12.5'"
                                             << " 12.5" << 12.5;
    QTest::newRow("a long text") << "printf('%.100000c', 'x')" << QString(100'000, 'x') << 0.0;
}

void TestRecordset::valuesKeepTheirKinds()
{
    QFETCH(QString, native);
    // Stands between others, so that its length counts.
    const Recordset rows = m_database->openNative("SELECT 'before', " + native + ", 'behind' UNION ALL SELECT 1, 2, 3");
    QTEST(rows.at(0, 1).toText(), "text");
    QTEST(rows.at(0, 1).toNumber(), "number");
    QCOMPARE(rows.at(0, 1).isNull(), native == "NULL");
    QCOMPARE(rows.at(0, 2).toText(), "behind");
    QCOMPARE(rows.at(1, 2), Value(3));
}

void TestRecordset::fieldsByName()
{
    const Recordset rows = open("Select * from Tools");
    QCOMPARE(rows.field(u"PRICEPER"), Value(12.5));
    QCOMPARE(rows.field(u"out"), Value(-1));
    QVERIFY(rows.field(u"Out").toBool());
    QCOMPARE(rows.text(u"datein"), "2026-03-04 13:05:09");
    QCOMPARE(rows.fieldName(1), "Type");
    QCOMPARE(errorOf([&] { rows.field(u"Maker"); }), EngineError::noSuchField);
    QCOMPARE(errorOf([&] { rows.field(6); }), EngineError::noSuchField);
}

void TestRecordset::addingNeverReadsTheTable()
{
    const qint64 before = m_database->counters().rowsFetched;
    Recordset tools = open("Select * from tools");
    tools.addNew();
    tools.setField(u"Type", QString("2"));
    tools.setField(u"priceper", 1.23456);
    tools.setField(u"DateIn", QString("3/4/2026 1:05 PM"));
    tools.setField(u"Out", true);
    QCOMPARE(tools.field(u"Type"), Value(2));
    QVERIFY(tools.field(u"Description").isNull());
    tools.update();
    tools.addNew();
    tools.update();
    QCOMPARE(m_database->counters().rowsFetched, before);
    QCOMPARE(
        column(
            "Select ID & ' ' & Type & ' ' & PricePer & ' ' & DateIn & ' ' & Out from Tools where ID > 1 order by ID"),
        (QStringList{"2 2 1.2346 2026-03-04 13:05:00 -1", "3    0"}));
    // Asked for its rows now, it has the new ones.
    QCOMPARE(tools.recordCount(), 3);
}

void TestRecordset::addedRowsTakeTheirPlace()
{
    Recordset reports = open("Select * from Reports where Default = false order by Name");
    QCOMPARE(reports.recordCount(), 4);
    reports.moveNext();
    reports.addNew();
    reports.setField(u"Name", QString("new"));
    reports.update();
    QCOMPARE(reports.text(u"Name"), "c"); // the current row stays
    QCOMPARE(reports.recordCount(), 5);
    reports.moveLast();
    QCOMPARE(reports.text(u"Name"), "new");
    QCOMPARE(reports.field(u"Default"), Value(0)); // what the table gave it
    reports.edit();
    reports.setField(u"Name", QString("newer"));
    reports.update();
    QCOMPARE(names(), (QStringList{"a", "b", "c", "c", "d", "newer"}));
}

void TestRecordset::rowsThatLookAlikeChangeOneByOne()
{
    Recordset reports = open("Select * from Reports where Name = 'C'");
    reports.moveLast();
    reports.edit();
    reports.setField(u"Default", true);
    reports.cancelUpdate();
    QCOMPARE(reports.field(u"Default"), Value(0));
    reports.edit();
    reports.setField(u"Default", true);
    QCOMPARE(reports.field(u"Default"), Value(-1));
    reports.update();
    QCOMPARE(reports.field(u"Default"), Value(-1));
    QCOMPARE(reports.at(0, 2), Value(0));
    QCOMPARE(column("Select Count(*) from Reports where Name = 'c' and Default = true"), QStringList("1"));
    // A move gives up what was not stored.
    reports.edit();
    reports.setField(u"Name", QString("lost"));
    reports.moveFirst();
    QCOMPARE(errorOf([&] { reports.update(); }), EngineError::updateWithoutEdit);
    QCOMPARE(names(), (QStringList{"a", "b", "c", "c", "d"}));
}

void TestRecordset::removedRowsMakeWay()
{
    Recordset reports = open("Select * from Reports order by Name");
    reports.moveNext();
    reports.remove();
    QCOMPARE(reports.text(u"Name"), "c");
    reports.moveLast();
    reports.remove();
    QVERIFY(reports.atEnd());
    QCOMPARE(reports.recordCount(), 3);
    QCOMPARE(names(), (QStringList{"a", "c", "c"}));
}

void TestRecordset::changesAreRefused_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("error");
    QTest::newRow("a type that is not there") << "Select * from Tools"
                                              << "Type"
                                              << "9" << int(EngineError::relatedRecordRequired);
    QTest::newRow("a type that tools need") << "Select * from Types"
                                            << "ID"
                                            << "9" << int(EngineError::relatedRecords);
    QTest::newRow("a number that is taken") << "Select * from Types"
                                            << "ID"
                                            << "2" << int(EngineError::duplicateKey);
    QTest::newRow("a text for a number") << "Select * from Tools"
                                         << "Type"
                                         << "nine" << int(EngineError::typeMismatch);
    QTest::newRow("a number too large") << "Select * from Tools"
                                        << "Type"
                                        << "9999999999" << int(EngineError::numericOverflow);
    QTest::newRow("a date that is none") << "Select * from Tools"
                                         << "DateIn"
                                         << "soon" << int(EngineError::typeMismatch);
    QTest::newRow("a field that is not there") << "Select * from Tools"
                                               << "Maker"
                                               << "x" << int(EngineError::noSuchField);
    QTest::newRow("some columns") << "Select ID, Type from Tools"
                                  << "Type"
                                  << "2" << int(EngineError::readOnly);
    QTest::newRow("two tables") << "Select * from Tools, Types"
                                << "Type"
                                << "2" << int(EngineError::readOnly);
    QTest::newRow("distinct rows") << "Select distinct * from Tools"
                                   << "Type"
                                   << "2" << int(EngineError::readOnly);
}

void TestRecordset::changesAreRefused()
{
    QFETCH(QString, statement);
    QFETCH(QString, field);
    QFETCH(QString, value);
    Recordset rows = open(statement);
    const QStringList before = column("Select Type & PricePer & DateIn from Tools") + column("Select ID from Types");
    QTEST(errorOf([&] {
              rows.edit();
              rows.setField(field, value);
              rows.update();
          }),
          "error");
    QCOMPARE(column("Select Type & PricePer & DateIn from Tools") + column("Select ID from Types"), before);
}

void TestRecordset::rowThatIsGone()
{
    Recordset types = open("Select * from Types order by ID");
    QCOMPARE(errorOf([&] { types.remove(); }), EngineError::relatedRecords);
    QCOMPARE(types.recordCount(), 2);
    types.moveLast();
    m_database->execute("DELETE FROM Types WHERE ID = 2");
    QCOMPARE(errorOf([&] { types.remove(); }), EngineError::recordDeleted);
    types.edit();
    types.setField(u"Description", QString("x"));
    QCOMPARE(errorOf([&] { types.update(); }), EngineError::recordDeleted);
}

void TestRecordset::findsTheFirstMatch_data()
{
    QTest::addColumn<QString>("criteria");
    QTest::addColumn<int>("row");
    QTest::newRow("a module's default") << "Module = 'Tools CheckedOut' and Default = true" << 1;
    QTest::newRow("a name in any case") << "name = 'B'" << 1;
    QTest::newRow("the first of several") << "Name = 'c'" << 2;
    QTest::newRow("a name in brackets") << "[Default] = True" << 1;
    QTest::newRow("what LIKE, IN and BETWEEN say")
        << "name like '[c-z]' and name in ('C', 'D') and name between 'e' and 'c'" << 2;
    QTest::newRow("nothing") << "Module is null" << 4;
    QTest::newRow("a function") << "ucase(Name) & '!' = 'D!'" << 4;
    QTest::newRow("none") << "Name = 'e'" << -1;
    QTest::newRow("with an apostrophe") << "Name = 'd''s'" << -1;
}

void TestRecordset::findsTheFirstMatch()
{
    QFETCH(QString, criteria);
    QFETCH(int, row);
    Recordset reports = open("Select * from Reports order by Name");
    reports.setPosition(3);
    QCOMPARE(reports.findFirst(criteria), row >= 0);
    QCOMPARE(reports.position(), row >= 0 ? row : 3);
}

void TestRecordset::criteriaMeanWhatTheyMeanBehindWhere()
{
    Recordset tools = open("Select ID, Type, DateIn, PricePer & '' as Price from Tools");
    QVERIFY(tools.findFirst("ID = 1 and DateIn = #2026-03-04 13:05:09# and Price = '12.5' and Price = 12.5"));
    QVERIFY(tools.findFirst("format(DateIn, 'short date') = #2026-03-04#"));
    QVERIFY(!tools.findFirst("Type = 2"));
    QCOMPARE(errorOf([&] { tools.findFirst("Maker = 'x'"); }), EngineError::unknownColumn);
    QCOMPARE(errorOf([&] { tools.findFirst("ID = 'x'"); }), EngineError::typeMismatch);
    QCOMPARE(errorOf([&] { tools.findFirst("ID = 1; DELETE FROM Tools"); }), EngineError::syntaxError);
    QCOMPARE(errorOf([&] { tools.findFirst("Count(*) = 1"); }), EngineError::aggregateInCondition);
    QCOMPARE(errorOf([&] { tools.findFirst(""); }), EngineError::syntaxError);
}

QTEST_GUILESS_MAIN(TestRecordset)
#include "tst_recordset.moc"
