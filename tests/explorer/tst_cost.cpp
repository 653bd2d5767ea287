#include "explorer/frmFind.h"
#include "explorer/frmTree.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/FakeFrame.h"

#include <QElapsedTimer>
#include <QtTest>

/// What the explorer asks of the engine and of the screen, which decides how fast it is with a large crib.
class TestCost : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void addingReadsNoTable();
    void indexesAreUsed_data();
    void indexesAreUsed();
    void aListIsPaintedOnce();
    void aSearchPaintsNowAndThen();
    void folderPathsAreReadOnce();
    void nothingIsAskedWhileIdle();

private:
    frmTree &explorer() { return frmTree::instance(); }
    static const Database::Counters &counters() { return Session::database().counters(); }
    void click(const QString &key)
    {
        TreeView *tree = explorer().ui.tvMain;
        tree->selectNode(tree->nodes().find(key));
        emit tree->nodeClicked(tree->selectedNode());
    }

    static constexpr int tools = 400;
    std::unique_ptr<CribDatabase> m_crib;
    std::unique_ptr<FakeFrame> m_frame;
};

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

void TestCost::init()
{
    m_crib = std::make_unique<CribDatabase>();
    QStringList statements;
    for (int tool = 1; tool <= tools; ++tool)
        statements.append(QStringLiteral("INSERT INTO Tools (Type,Location,Description,Out) VALUES(2,1,'Wrench %1',%2)")
                              .arg(tool)
                              .arg(tool % 4 == 0 ? -1 : 0));
    for (int tool = 4; tool <= tools; tool += 4)
        statements.append(QStringLiteral("INSERT INTO CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,"
                                         "Active) VALUES(%1,'17',1250,4,#2026-03-04#,-1)")
                              .arg(tool));
    m_crib->run(statements);
    m_frame = std::make_unique<FakeFrame>();
    explorer().Startup(false);
    QCoreApplication::processEvents();
}

void TestCost::cleanup()
{
    frmTree::unload();
    m_frame.reset();
    m_crib.reset();
}

void TestCost::addingReadsNoTable()
{
    const qint64 before = counters().rowsFetched;
    Recordset loans = openRecordset("Select * from checkoutin");
    loans.addNew();
    loans.setField(u"Tool_Id", 1);
    loans.update();
    QCOMPARE(counters().rowsFetched, before);
}

void TestCost::indexesAreUsed_data()
{
    QTest::addColumn<QStringList>("statements");

    QTest::newRow("a list of tools of a type") << QStringList();
    QTest::newRow("lending and taking back")
        << QStringList({"Update tools set out=-1 where id=1",
                        "Update checkOutIn set DateIn =#2026-03-05#, Active=0 where Tool_Id=4 And Active=-1"});
    QTest::newRow("deleting tools with their history")
        << QStringList({"DELETE FROM CheckOutIn WHERE tool_id in (4,8)", "DELETE FROM tools WHERE id in (4,8)"});
    QTest::newRow("deleting a folder that tools refer to by index")
        << QStringList({"DELETE FROM types WHERE id in (1)"});
}

void TestCost::indexesAreUsed()
{
    QFETCH(QStringList, statements);
    const qint64 before = counters().fullScanSteps;
    if (statements.isEmpty())
        click("l2");
    for (const QString &statement : statements)
        QVERIFY(execute(statement) > 0);
    QCOMPARE(counters().fullScanSteps, before);
}

void TestCost::aListIsPaintedOnce()
{
    const Paints list(explorer().ui.lstToolList->viewport());
    click("l2");
    QCOMPARE(explorer().itemCount(), tools);
    QCOMPARE(list.count, 0);
    QTRY_VERIFY(list.count > 0);
    QCoreApplication::processEvents();
    QCOMPARE(list.count, 1);
}

void TestCost::aSearchPaintsNowAndThen()
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

void TestCost::folderPathsAreReadOnce()
{
    KeyedList hits({});
    const qint64 before = counters().run;
    clsTools().Find("type", "Wrench*", hits);
    QCOMPARE(hits.count(), tools + 1);
    // Folders and tools, and the way from two folders to the root.
    QCOMPARE(counters().run - before, 2 + 1 + 2);
}

void TestCost::nothingIsAskedWhileIdle()
{
    const qint64 before = counters().run;
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(counters().run, before);
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    TestCost test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_cost.moc"
