#include "app/HelpPages.h"
#include "app/ModMain.h"
#include "app/frmSplash.h"
#include "app/mdiMain.h"
#include "common/ProgramState.h"
#include "db/Session.h"
#include "explorer/frmTree.h"
#include "platform/system/ProgramFolder.h"
#include "platform/system/SingleInstance.h"
#include "platform/system/UserSettings.h"
#include "tests/support/DataRows.h"
#include "tests/support/EmptyCrib.h"
#include "tests/support/Files.h"
#include "tests/support/ScriptedUser.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScopeGuard>

/// From the start of the program to its main window, and that window's menus.
class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Q_INIT_RESOURCE(icons);
        m_folder = std::make_unique<QTemporaryDir>();
        ProgramFolder::setPath(m_folder->path());
        qputenv("XDG_RUNTIME_DIR", m_folder->path().toUtf8()); // a copy that somebody works with is none of ours
    }

    void cleanup() { Session::close(); }

    void everyWindowsPageIsShipped()
    {
        for (const auto &[window, page] : helpPages())
            QVERIFY2(QFile::exists(PROGRAM_BIN "/manual/" + QString(page)), window);
    }

    void refusesASecondCopy()
    {
        makeDatabase();
        const SingleInstance first("vorlane");
        QVERIFY(first.acquired());
        ScriptedUser user(QMessageBox::Ok);
        QCOMPARE(ModMain::Main(), EXIT_FAILURE);
        QCOMPARE(
            user.boxes(),
            QStringList(
                "System Message (critical): You are already running Vorlane Manager... Check your Task-Bar! [OK]"));
        QVERIFY(!mdiMain::isLoaded());
    }

    void aKilledCopyLeavesNothingThatCounts()
    {
        QLockFile lock(file("lock"));
        QVERIFY(lock.tryLock(0));
        QVERIFY(QFile::copy(file("lock"), file("vorlane.lock"))); // its process had the number of this one
        QVERIFY(SingleInstance("vorlane").acquired());
    }

    void saysWhyADatabaseCannotBeOpened()
    {
        ScriptedUser user(QMessageBox::Ok);
        QCOMPARE(ModMain::Main(), EXIT_FAILURE);
        QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
        QVERIFY2(user.seen[0].text.startsWith("Could not find file '"), qPrintable(user.seen[0].text));
        QVERIFY(user.seen[0].detail.contains("\nvorlane-admin create dorvak.mdb\n"));
        QVERIFY(!mdiMain::isLoaded() && !QApplication::overrideCursor());
        QVERIFY(!QFile::exists(file("dorvak.mdb"))); // the program makes none
    }

    void showsTheMainWindow_data()
    {
        row("on its own", false, QStringList({"&File", "&Tables", "&Reports", "&Window"}));
        row("beside the suite", true, QStringList({"&File", "&Window"}));
    }

    void showsTheMainWindow()
    {
        const auto [suite, bar] = fetched<bool, QStringList>();
        makeDatabase();
        if (suite)
            writeFile(file("Dorvak.exe"), "suite");
        QDir::setCurrent(QDir::rootPath()); // the current directory does not matter
        QWidget other; // the program ends with its main window, whatever else is open
        QCOMPARE(run([&](mdiMain &frame) {
                     QVERIFY(frame.isVisible());
                     QVERIFY(!frmSplash::isLoaded());
                     other.show();
                     QCOMPARE(frame.windowTitle(), "Dorvak Vorlane Manager Version " + ProgramFolder::version());
                     QStringList shown;
                     for (const QAction *action : frame.menuBar()->actions())
                         if (action->isVisible())
                             shown.append(action->text());
                     QCOMPARE(shown, bar);
                     QCOMPARE(frmTree::instance().TreeMode(), "type");
                     QCOMPARE(frame.findChild<QMdiSubWindow *>()->size(), QSize(755, 475));
                 }),
                 0);
        QCOMPARE(ProgramState::SuiteInstalled, suite);
        QVERIFY(!mdiMain::isLoaded());
    }

    void entriesActOnTheExplorer()
    {
        makeDatabase();
        run([](mdiMain &frame) {
            frmTree::instance().ui.optMode1->setChecked(true);
            frame.entry("mnuFileTools")->trigger();
            QCOMPARE(frmTree::instance().TreeMode(), "location"); // open already
            auto *explorer = qobject_cast<QMdiSubWindow *>(frmTree::instance().parentWidget());
            explorer->showMinimized();
            frame.entry("mnuFileTools")->trigger();
            QVERIFY(!explorer->isMinimized());

            frmTree::instance().ui.cmdClose->click();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QTRY_VERIFY(frame.findChild<QMdiArea *>()->subWindowList().isEmpty());
            frame.findChild<QAction *>("Toolbar1_1")->trigger();
            QCOMPARE(frmTree::instance().TreeMode(), "type"); // afresh

            ScriptedUser user(QMessageBox::Ok, 2);
            frame.entry("mnuCheckOut")->trigger();
            frame.entry("mnuDeleteScrapped")->trigger();
            QCOMPARE(user.texts(),
                     QStringList({"Please select a tool to Check Out.", "Delete Scrapped Tool Under Construction"}));
            QTimer::singleShot(0, &frame, [&] {
                QVERIFY(!frame.entry("mnuTreeNewType")->isVisible() && frame.entry("mnuTreeNewLocation")->isVisible());
                frame.menu("mnuTreeNew")->close();
            });
            frame.popUp("mnuTreeNew", {}, {"mnuTreeNewType"});
        });
    }

    void theFrameComesBackAsItWas()
    {
        makeDatabase();
        writeFile(file("vorlane.ini"), "[mdiMain]\ngeometry=@ByteArray(\\x1\\xd9\\xd0\\xcb"); // a broken file
        UserSettings::setFile(file("vorlane.ini"));
        const auto forget = qScopeGuard([] { UserSettings::setFile({}); });
        run([](mdiMain &frame) {
            QVERIFY(!frame.isMaximized());
            frame.setGeometry(31, 32, 700, 500);
            frame.showMaximized();
        });
        run([](mdiMain &frame) {
            QVERIFY(frame.isMaximized());
            QCOMPARE(frame.normalGeometry(), QRect(31, 32, 700, 500));
        });
    }

private:
    void makeDatabase() { m_crib.emplace(file("dorvak.mdb")); }

    QString file(const QString &name) const { return m_folder->filePath(name); }

    /// Runs the program, does `steps` in its main window and closes it.
    int run(const std::function<void(mdiMain &)> &steps)
    {
        bool done = false;
        QTimer look; // events run during start-up, too
        connect(&look, &QTimer::timeout, qApp, [&] {
            if (!mdiMain::isLoaded() || !mdiMain::instance().isVisible())
                return;
            look.stop();
            done = true;
            steps(mdiMain::instance());
            mdiMain::instance().close();
        });
        look.start(0);
        QTimer::singleShot(30000, &look, [] { QApplication::exit(EXIT_FAILURE); });
        const int status = ModMain::Main();
        [&] { QVERIFY(done); }();
        return status;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::optional<EmptyCrib> m_crib;
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
