#include "platform/gui/UserAction.h"
#include "tests/app/CribLife.h"

#include <QProcess>

#include <csignal>
#include <sys/resource.h>

namespace {

constexpr int toolCount = 60;

void fill(CribDatabase &crib)
{
    crib.insert("Types (Description,Parent)", {"'Drills',0"});
    QStringList tools;
    for (int tool = 0; tool < toolCount; ++tool)
        tools.append(QStringLiteral("%1,%2,'Fenwick','P-%3','Tool %4',12.5,0")
                         .arg(tool % 3 + 1)
                         .arg(tool % 2 + 1)
                         .arg(tool)
                         .arg(tool % 7));
    crib.insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)", tools);
    ProgramState::SuiteInstalled = true;
}

// While it lives no file of this process can be written: the disk is full.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
        getrlimit(RLIMIT_FSIZE, &m_before);
        setLimit(0);
    }
    ~FullDisk() { setLimit(m_before.rlim_cur); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    void setLimit(rlim_t size)
    {
        const rlimit limit{size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    rlimit m_before;
};

// Answers whatever is asked and keeps what was said.
struct AgreeableUser {
    AgreeableUser()
    {
        setMsgBoxPresenter([this](const MsgBoxCall &call) {
            said.append(call.text);
            if (others)
                others();
            return call.buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
        });
    }
    ~AgreeableUser() { setMsgBoxPresenter({}); }
    QStringList said;
    std::function<void()> others;
};

// Lends, takes back, moves and deletes a random tool, or moves a type.
void actAtAnotherDesk(Database &database, std::mt19937 &random)
{
    const QString tool = QString::number(random() % toolCount + 1);
    Transaction transaction(database);
    const Recordset found = database.openRecordset("Select Out from Tools where ID=" + tool);
    if (found.isEmpty())
        return;
    if (found.field(u"Out").toBool()) {
        database.execute("Update CheckOutIn set DateIn=#2026-03-05#, Active=0 where Active=-1 and Tool_Id=" + tool);
        database.execute("Update Tools set Out=0 where ID=" + tool);
    } else if (const unsigned deed = random() % 20; deed == 0) {
        database.execute("Delete from CheckOutIn where Tool_Id=" + tool);
        database.execute("Delete from Tools where ID=" + tool);
    } else if (deed < 10) {
        database.execute("Update Tools set Out=-1 where ID=" + tool);
        database.execute("Insert into CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active)"
                         " values ("
                         + tool + ",'21',1250,4,#2026-03-04#,-1)");
    } else {
        database.execute("Update Tools set Location=" + QString::number(deed % 2 + 1) + " where ID=" + tool);
        database.execute("Update Types set Parent=" + QString::number(deed % 2) + " where ID=3");
    }
    transaction.commit();
}

}

/// Long days in the crib, and what happens when the machine fails in the middle of one.
class TestCribLife : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.emplace();
        fill(*m_crib);
        explorer().Startup(false);
    }

    void invariantsHoldThroughAllOperations()
    {
        const int steps = ServerDatabase::isWanted() ? 600 : 2000;
        CribLife life(20260304);
        AgreeableUser user;
        // A crib is on a disk; whether each write waited for it is not what is asked here.
        dontWaitForDisk(Session::database());
        int done = 0;
        for (int step = 0; step < steps; ++step)
            done += life.doSomething();
        QVERIFY2(done > steps / 2, qPrintable(QString::number(done)));
        QCOMPARE(faults(), QStringList());
        QCOMPARE(m_crib->rows("Select Count(*) from ScrapReasons"), QStringList("2")); // "lost" is "Lost"
        QVERIFY(!QApplication::overrideCursor());
    }

    // Somebody at another desk writes between any two steps, and while a question waits for its answer.
    void othersMayWriteAtAnyTime()
    {
        dontWaitForDisk(Session::database());
        const auto other = Workspace::first().openDatabase(m_crib->path());
        std::mt19937 random(5);
        CribLife life(20261121);
        AgreeableUser user;
        user.others = life.others = [&] { actAtAnotherDesk(*other, random); };
        for (int step = 0; step < 600; ++step) {
            life.doSomething();
            const TreePane *tree = explorer().ui.tvMain;
            QCOMPARE(explorer().ui.lblList->text(),
                     "Contents of '"
                         + KeyedTree::fullPath(tree->selectedNode()).left(explorer().view()->row.headingLength) + "'");
            QVERIFY(tree->selectionModel()->isSelected(tree->currentIndex()));
        }
        QCOMPARE(faults(), QStringList());
        QVERIFY(user.said.join("").contains("meanwhile"));
    }

    void nothingIsLostWhenTheFileCannotBeWritten_data()
    {
        for (const auto &[name, operation] : {std::pair("lending", CribLife::lend),
                                              {"taking back", CribLife::take},
                                              {"scrapping", CribLife::scrap},
                                              {"restoring", CribLife::restore},
                                              {"moving", CribLife::move}})
            for (const bool locked : {true, false})
                row(qPrintable(QString(name) + (locked ? ", file locked" : ", disk full")), locked, operation);
    }

    void nothingIsLostWhenTheFileCannotBeWritten()
    {
        const auto [locked, operation] = fetched<bool, int>();
        if (ServerDatabase::isWanted() && !locked)
            QSKIP("the disk is the server's");
        CribLife life(7);
        AgreeableUser user;
        dontWaitForDisk(Session::database());
        for (int step = 0; step < 60; ++step)
            life.doSomething();
        const QStringList before = contents();

        std::unique_ptr<Database> other;
        std::optional<FullDisk> full;
        if (locked) {
            dontWaitForOthers(Session::database());
            other = Workspace::first().openDatabase(m_crib->path());
            holdAll(*other);
        } else {
            full.emplace();
        }
        user.said.clear();
        runUserAction([&] { life.act(CribLife::Operation(operation)); });
        full.reset();
        if (other)
            other->executeNative("ROLLBACK"); // lets go
        QVERIFY2(!user.said.join("").isEmpty(), "it must say what happened");
        QCOMPARE(contents(), before);
        QCOMPARE(faults(), QStringList());
        QVERIFY(!QApplication::overrideCursor());

        frmCheckOut::unload();
        user.said.clear();
        explorer().rebuildView();
        QVERIFY(life.act(CribLife::Operation(operation))); // and the day goes on
    }

    // The child works on the file and tells each operation; it is killed while it is at the next one.
    void aKilledProgramLosesNoTool()
    {
        const QString path = m_crib->path();
        frmTree::unload();
        Session::close();
        const int kills =
            qEnvironmentVariableIntValue("VORLANE_KILLS") > 0 ? qEnvironmentVariableIntValue("VORLANE_KILLS") : 25;
        std::mt19937 random(11);
        for (int kill = 0; kill < kills; ++kill) {
            QProcess child;
            child.start(QCoreApplication::applicationFilePath(), {"--work-on", path, QString::number(kill)});
            const qint64 wanted = qint64(random() % 40);
            while (child.bytesAvailable() <= wanted && child.state() != QProcess::NotRunning)
                child.waitForReadyRead();
            child.kill();
            QVERIFY(child.waitForFinished());
            QCOMPARE(child.exitStatus(), QProcess::CrashExit);

            Session::open(path);
            QCOMPARE(faults(), QStringList()); // each deed is done whole or not at all
            QCOMPARE((m_crib->rows("Select ID from Tools") + m_crib->rows("Select ToolID from Scrap")).size(),
                     toolCount);
            Session::close();
        }
        Session::open(path);
    }

private:
    /// What the administrator's check finds.
    QStringList faults() const
    {
        QProcess check;
        check.start(PROGRAM_BIN "/vorlane-admin", {"check", m_crib->path()});
        [&] { QVERIFY(check.waitForFinished()); }();
        if (check.exitStatus() == QProcess::NormalExit && check.exitCode() == 0)
            return {};
        return QString::fromUtf8(check.readAllStandardOutput() + check.readAllStandardError()).trimmed().split('\n');
    }

    QStringList contents() const
    {
        QStringList all;
        for (const char *table : {"Tools", "CheckOutIn", "Scrap", "ScrapReasons", "Types", "Locations"})
            all << table << m_crib->rows(QStringLiteral("Select * from %1").arg(table));
        return all;
    }

    std::optional<CribExplorer> m_crib;
};

static int workOn(const QString &path, unsigned seed)
{
    Session::open(path);
    ProgramState::SuiteInstalled = true;
    FakeFrame frame;
    explorer().Startup(false);
    AgreeableUser user;
    CribLife life(seed);
    const CribLife::Operation operations[] = {CribLife::lend, CribLife::take, CribLife::scrap, CribLife::restore};
    for (unsigned step = 0;; ++step) {
        life.act(operations[step % std::size(operations)]);
        fputc('.', stdout);
        fflush(stdout);
    }
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Q_INIT_RESOURCE(icons);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--work-on")
        return workOn(arguments.value(2), arguments.value(3).toUInt());
    TestCribLife test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_criblife.moc"
