#include "explorer/frmFind.h"
#include "tests/support/CribExplorer.h"
#include "transactions/ToolCommands.h"
#include "transactions/frmCheckOut.h"

/// How often the explorer goes to a server and back. The numbers hold for a crib of any size: far away each journey
/// takes milliseconds, and a desk must not wait.
class TestJourneys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStringList types{"'Gauges',0"}, tools;
        for (int number = 4; number < 100; ++number)
            types.append(QString("'Type %1',%2").arg(number).arg(number / 3));
        for (int number = 3; number < 100; ++number)
            tools.append(QString("%1,1,'Gauge'").arg(number));
        m_crib.insert("Types (Description,Parent)", types);
        m_crib.insert("Tools (Type,Location,Description)", tools);
        m_crib.insert("Tools (Type,Location,Description)", QList<QString>(50, "1,1,'Wrench'"));
        explorer().Startup(false);
    }

    void anyNumberOfRows()
    {
        const auto expect = [this](const char *deed, int most, const std::function<void()> &act) {
            const qint64 before = Session::database().counters().journeys;
            act();
            const int journeys = int(Session::database().counters().journeys - before);
            QVERIFY2(journeys <= most, qPrintable(QString("%1: %2 journeys").arg(deed).arg(journeys)));
        };
        expect("tree of 99 types", 17, [] { explorer().rebuildView(); });
        expect("a click that lists 50 tools", 4, [this] { m_crib.go("l1"); });
        expect("search with 97 hits and their paths", 9, [this] {
            KeyedList hits({});
            clsTools().Find(*explorer().view(), "Gauge*", hits);
            QCOMPARE(hits.count(), 98);
        });
        m_crib.select("r100");
        const ScriptedUser user;
        expect("lending", 8, [] {
            whenModal<frmCheckOut>([](frmCheckOut &form) {
                const std::pair<QWidget *, const char *> entries[] = {
                    {form.ui.dbcEmp, "21"}, {form.ui.dbcJobType, "Job"}, {form.ui.dbcJob, "7002"}};
                for (const auto &[box, text] : entries) {
                    QTest::keyClicks(box, text);
                    QTest::keyClick(box, Qt::Key_Return);
                }
                QVERIFY(!form.isVisible());
            });
            MainSubs::CheckOutSelectedTool();
        });
    }

private:
    CribExplorer m_crib;
};

QTEST_MAIN(TestJourneys)
#include "tst_journeys.moc"
