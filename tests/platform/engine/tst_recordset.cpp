#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"

class TestRecordset : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database.emplace(
            "CREATE TABLE Types(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT NOT NULL);"
            "INSERT INTO Types VALUES (1, 'Drills'), (2, 'Taps');"
            "CREATE TABLE Tools(ID INTEGER PRIMARY KEY AUTOINCREMENT, Type LONG REFERENCES Types(ID), Description TEXT,"
            " PricePer CURRENCY, DateIn DATETIME, Out YESNO NOT NULL DEFAULT 0);"
            "INSERT INTO Tools VALUES (1, 1, 'Jobber', 12.5, '2026-03-04 13:05:09', -1);"
            "CREATE TABLE Reports(Name TEXT, Module TEXT, \"Default\" YESNO NOT NULL DEFAULT 0);"
            "INSERT INTO Reports VALUES ('a', 'Tools CheckedOut', 0), ('b', 'tools checkedout', -1),"
            " ('c', 'Junk Tools', 0), ('c', 'Junk Tools', 0), ('d', NULL, 0)");
    }

    void addingNeverReadsTheTable()
    {
        const qint64 before = (*m_database)->counters().rowsFetched;
        Recordset tools = open("Select * from tools");
        tools.addNew();
        tools.setField(u"Type", QString("2"));
        tools.setField(u"priceper", 1.23456);
        tools.setField(u"DateIn", QString("3/4/2026 1:05 PM"));
        tools.setField(u"Out", true);
        tools.update();
        QCOMPARE((*m_database)->counters().rowsFetched, before);
        QCOMPARE(column("Select ID & ' ' & Type & ' ' & PricePer & ' ' & DateIn & ' ' & Out from Tools where ID > 1 "
                        "order by ID"),
                 QStringList("2 2 1.2346 2026-03-04 13:05:00 -1"));
        // Asked for its rows now, it has the new ones.
        QCOMPARE(tools.recordCount(), 2);
    }

    void addedRowsTakeTheirPlace()
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
        QCOMPARE(reports.field(u"Default"), Value(0)); // what the table gave it
        reports.edit();
        reports.setField(u"Name", QString("newer"));
        reports.update();
        QCOMPARE(names(), (QStringList{"a", "b", "c", "c", "d", "newer"}));
    }

    void rowsThatLookAlikeChangeOneByOne()
    {
        Recordset reports = open("Select * from Reports where Name = 'C'");
        reports.moveLast();
        reports.edit();
        reports.setField(u"Default", true);
        reports.update();
        QCOMPARE(reports.field(u"Default"), Value(-1));
        QCOMPARE(column("Select Count(*) from Reports where Name = 'c' and Default = true"), QStringList("1"));
        // A move gives up what was not stored.
        reports.edit();
        reports.setField(u"Name", QString("lost"));
        reports.moveFirst();
        QCOMPARE(errorOf([&] { reports.update(); }), EngineError::updateWithoutEdit);
        QCOMPARE(names(), (QStringList{"a", "b", "c", "c", "d"}));
    }

    void removedRowsMakeWay()
    {
        Recordset reports = open("Select * from Reports order by Name");
        reports.moveNext();
        reports.remove();
        QCOMPARE(reports.text(u"Name"), "c");
        reports.moveLast();
        reports.remove();
        QVERIFY(reports.atEnd() && !reports.atBeginning());
        QCOMPARE(errorOf([&] { reports.field(0); }), EngineError::noCurrentRecord);
        QCOMPARE(errorOf([&] { reports.moveNext(); }), EngineError::noCurrentRecord);
        QCOMPARE(reports.recordCount(), 3);
        QCOMPARE(names(), (QStringList{"a", "c", "c"}));
    }

    void changesAreRefused_data()
    {
        row("a type that is not there", "Select * from Tools", "Type", "9", EngineError::relatedRecordRequired);
        row("a type that tools need", "Select * from Types", "ID", "9", EngineError::relatedRecords);
        row("a number that is taken", "Select * from Types", "ID", "2", EngineError::duplicateKey);
        row("a text for a number", "Select * from Tools", "Type", "nine", EngineError::typeMismatch);
        row("a date that is none", "Select * from Tools", "DateIn", "soon", EngineError::typeMismatch);
        row("a field that is not there", "Select * from Tools", "Maker", "x", EngineError::noSuchField);
        row("some columns", "Select ID, Type from Tools", "Type", "2", EngineError::readOnly);
        row("two tables", "Select * from Tools, Types", "Type", "2", EngineError::readOnly);
    }

    void changesAreRefused()
    {
        const auto [statement, field, value, error] = fetched<QString, QString, QString, int>();
        Recordset rows = open(statement);
        const auto stored = [this] {
            return column("Select Type & PricePer & DateIn from Tools") + column("Select ID from Types");
        };
        const QStringList before = stored();
        QCOMPARE(errorOf([&] {
                     rows.edit();
                     rows.setField(field, value);
                     rows.update();
                 }),
                 error);
        QCOMPARE(stored(), before);
    }

    void rowThatIsGone()
    {
        Recordset types = open("Select * from Types order by ID");
        QCOMPARE(errorOf([&] { types.remove(); }), EngineError::relatedRecords);
        QCOMPARE(types.recordCount(), 2);
        types.moveLast();
        (*m_database)->execute("DELETE FROM Types WHERE ID = 2");
        QCOMPARE(errorOf([&] { types.remove(); }), EngineError::recordDeleted);
        types.edit();
        types.setField(u"Description", QString("x"));
        QCOMPARE(errorOf([&] { types.update(); }), EngineError::recordDeleted);
    }

    void findsTheFirstMatch_data()
    {
        row("a module's default", "Module = 'Tools CheckedOut' and Default = true", 1);
        row("the first of several", "Name = 'c'", 2);
        row("a name in brackets", "[Default] = True", 1);
        row("what LIKE, IN and BETWEEN say", "name like '[c-z]' and name in ('C', 'D') and name between 'e' and 'c'",
            2);
        row("with an apostrophe", "Name = 'd''s'", -1);
    }

    void findsTheFirstMatch()
    {
        const auto [criteria, row] = fetched<QString, int>();
        Recordset reports = open("Select * from Reports order by Name");
        reports.setPosition(3);
        QCOMPARE(reports.findFirst(criteria), row >= 0);
        QCOMPARE(reports.position(), row >= 0 ? row : 3);
    }

    void criteriaMeanWhatTheyMeanBehindWhere()
    {
        Recordset tools = open("Select ID, DateIn, PricePer & '' as Price from Tools");
        QVERIFY(tools.findFirst("DateIn = #2026-03-04 13:05:09# and Price = '12.5' and Price = 12.5"));
        QVERIFY(tools.findFirst("Price between 2 and 100 and Price in (1, 12.5)"));
        QVERIFY(tools.findFirst("format(DateIn, 'short date') = #2026-03-04#"));
        QCOMPARE(errorOf([&] { tools.findFirst("ID = 1; DELETE FROM Tools"); }), EngineError::syntaxError);
    }

private:
    Recordset open(const QString &statement) { return (*m_database)->openRecordset(statement); }
    QStringList names() { return column("Select Name from Reports order by Name"); }

    QStringList column(const QString &statement)
    {
        QStringList texts;
        for (Recordset rows = open(statement); !rows.atEnd(); rows.moveNext())
            texts.append(rows.field(0).toText());
        return texts;
    }

    std::optional<EngineFile> m_database;
};

QTEST_GUILESS_MAIN(TestRecordset)
#include "tst_recordset.moc"
