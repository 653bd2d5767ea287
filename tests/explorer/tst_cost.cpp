#include "explorer/frmFind.h"
#include "tests/support/CribExplorer.h"
#include "tests/support/DataRows.h"

#include <QElapsedTimer>
#include <QStatusBar>
#include <QtTest>

namespace {

/// Counts how often a widget is painted.
class Paints : public QObject
{
public:
    explicit Paints(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

}

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

    void addingReadsNoTable()
    {
        const qint64 before = counters().rowsFetched;
        Recordset loans = openRecordset("Select * from checkoutin");
        loans.addNew();
        loans.setField(u"Tool_Id", 1);
        loans.update();
        QCOMPARE(counters().rowsFetched, before);
    }

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

    void aListIsPaintedOnce()
    {
        const Paints list(m_crib->list()->viewport());
        m_crib->go("l2");
        QCOMPARE(explorer().itemCount(), tools);
        QCOMPARE(list.count, 0);
        QTRY_VERIFY(list.count > 0);
        QCoreApplication::processEvents();
        QCOMPARE(list.count, 1);
    }

    void aSearchPaintsNowAndThen()
    {
        explorer().ui.cmdFind->click();
        frmFind &find = frmFind::instance();
        find.ui.txtFind->setText("Wrench*");
        QCoreApplication::processEvents();
        const Paints list(find.ui.lstFind->viewport()), status(find.ui.sbr1);
        QElapsedTimer timer;
        timer.start();
        find.ui.cmdStart->click();
        QCOMPARE(find.ui.lstFind->model()->rowCount(), tools + 1);
        // At the start, at the end, and every 33 ms in between.
        const int most = int(timer.elapsed() / 33) + 3;
        QVERIFY2(list.count <= most, qPrintable(QString::number(list.count)));
        QVERIFY2(status.count <= most, qPrintable(QString::number(status.count)));
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

    void nothingIsAskedWhileIdle()
    {
        const qint64 before = counters().run;
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(counters().run, before);
    }

private:
    static const Database::Counters &counters() { return Session::database().counters(); }
    static constexpr int tools = 400;
    std::optional<CribExplorer> m_crib;
};

QTEST_MAIN(TestCost)
#include "tst_cost.moc"
