#include "explorer/frmFind.h"
#include "tests/support/CribExplorer.h"
#include "tests/support/DataRows.h"

#include <QStatusBar>
#include <QtTest>

/// What the explorer asks of the engine and of the screen, which decides how fast it is with a large crib.
class TestCost : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.emplace();
        m_crib->insert("Tools (Type,Location,Description,Out)",
                       QStringList(tools / 4, "2,1,'Wrench',-1") + QStringList(tools / 4 * 3, "2,1,'Wrench',0"));
        m_crib->run({"INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active)"
                     " SELECT ID,'17',1250,4,#2026-03-04#,-1 FROM Tools WHERE Out=-1"});
        explorer().Startup(false);
        QCoreApplication::processEvents();
    }

    void cleanup() { m_crib.reset(); }

    void indexesAreUsed_data()
    {
        columns<QStringList>("statements");
        row("a list of tools of a type", QStringList());
        row("lending and taking back",
            QStringList({"Update tools set out=-1 where id=1",
                         "Update checkOutIn set DateIn =#2026-03-05#, Active=0 where Tool_Id=4 And Active=-1"}));
        row("deleting tools with their history",
            QStringList({"DELETE FROM CheckOutIn WHERE tool_id in (4,8)", "DELETE FROM tools WHERE id in (4,8)"}));
        row("deleting a folder that tools refer to by index", QStringList({"DELETE FROM types WHERE id in (1)"}));
    }

    void indexesAreUsed()
    {
        QFETCH(QStringList, statements);
        const qint64 before = counters().fullScanSteps;
        if (statements.isEmpty())
            m_crib->go("l2");
        for (const QString &statement : statements)
            QVERIFY(execute(statement) > 0);
        QCOMPARE(counters().fullScanSteps, before);
    }

    void folderPathsAreReadOnce()
    {
        KeyedList hits({});
        const qint64 before = counters().run;
        clsTools().Find(*View::ofMode("type"), "Wrench*", hits);
        QCOMPARE(hits.count(), tools + 1);
        // Folders and tools, and the way from two folders to the root.
        QCOMPARE(counters().run - before, 2 + 1 + 2);
    }

    void theStatusLineAsksAtRest()
    {
        m_crib->go("l2");
        const qint64 before = counters().run;
        m_crib->list()->setFocus();
        for (int i = 0; i < 10; ++i)
            QTest::keyClick(m_crib->list(), Qt::Key_Down);
        QCOMPARE(counters().run, before);
        const auto *status = explorer().window()->findChild<QStatusBar *>()->findChild<QLabel *>();
        QTRY_VERIFY2(status->text().endsWith("|  in the crib"), qPrintable(status->text()));
        m_crib->run({"DELETE FROM Tools"});
        QTest::keyClick(m_crib->list(), Qt::Key_Up);
        QTRY_VERIFY2(status->text().contains("gone meanwhile"), qPrintable(status->text()));
    }

private:
    static const Database::Counters &counters() { return Session::database().counters(); }
    static constexpr int tools = 400;
    std::optional<CribExplorer> m_crib;
};

QTEST_MAIN(TestCost)
#include "tst_cost.moc"
