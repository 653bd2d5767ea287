#include "common/ProgramState.h"
#include "desk/DeskWindow.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/ScriptedUser.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QToolButton>

#include <csignal>

#include <sys/resource.h>

/// The desk's window as an attendant has it: a scanner that types, keys, a finger.
class TestDeskWindow : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        ProgramState::SuiteInstalled = true;
        ProgramFolder::setPath(QFileInfo(crib->path()).path());
        now = QDateTime({2026, 3, 4}, {13, 5, 0});
        Clock::setSource([this] { return now; });
        crib->insert("Tools (Type,Location,PartNumber,Description)",
                     {"2,1,'TW-40','Torque wrench'", "2,1,'TW-60','Torque wrench, long'", "1,2,'GA-1','Gauge'"});
        desk = std::make_unique<DeskWindow>();
        desk->player = [this](Answer::Sound sound) { sounds.append(sound); };
        sounds.clear();
        desk->show();
        QVERIFY(QTest::qWaitForWindowActive(desk.get()));
    }
    void cleanup()
    {
        desk.reset();
        Clock::setSource({});
        ProgramFolder::setPath({});
        crib.reset();
    }

    void scannerLendsAndReturns()
    {
        type("E21\nJ1250\nT1\nT2\n");
        QCOMPARE(desk->ui.lblWho->text(), "BAKER TOM - Job 1250");
        QCOMPARE(desk->ui.lblAnswer->text(), "T2 Torque wrench, long is out: BAKER TOM, Job 1250.");
        QCOMPARE(line(0), "13:05:00|Out|T2 Torque wrench, long|TW-60|BAKER TOM|Job 1250");
        QTest::keyClick(desk.get(), Qt::Key_F4);
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn"), QStringList("1"));
        // Half a code that was cut off stays out of the next one, and control keys make no other code of it.
        QTest::keyClicks(field(), "T1");
        QTest::keyClick(field(), Qt::Key_A, Qt::ControlModifier);
        type("3\n");
        QCOMPARE(desk->ui.lblAnswer->text(), "That could not be read. Scan it again.");
        now = now.addSecs(60);
        QTest::keyClicks(field(), "t1");
        QTest::keyClick(field(), Qt::Key_Tab);
        QCOMPARE(desk->ui.lblAnswer->text(), "T1 Torque wrench is back, from BAKER TOM.");
        QCOMPARE(sounds.last(), Answer::SoundDone);
        QVERIFY(field()->hasFocus() && field()->text().isEmpty());
        // Another window of the program takes no scan away.
        QWidget manual;
        manual.show();
        QVERIFY(QTest::qWaitForWindowActive(&manual));
        QTest::keyClicks(&manual, "T2");
        QCOMPARE(field()->text(), "T2");
    }

    void longNamesLeaveRoomForAll()
    {
        const QHeaderView *header = desk->ui.lstLines->header();
        QVERIFY(header->sectionSize(5) >= header->sectionSizeHint(5)); // of no deed yet
        crib->insert("Tools (Type,Location,PartNumber,Description)",
                     {QString("1,2,'%1','%1'").arg(QString(240, 'M').replace(5, 1, " "))});
        type("E21\nJ1250\nT4\n");
        desk->resize(800, 460);
        QVERIFY(header->length() <= desk->ui.lstLines->viewport()->width() && header->sectionSize(5) > 50);
        QVERIFY(desk->ui.lblAnswer->height() <= 460 / 4 && desk->ui.lblAnswer->text().endsWith("Job 1250."));
    }

    void choosesByArrowAndByFinger()
    {
        type("E21\nJ1250\nwrench\n");
        QCOMPARE(line(1), "T2 Torque wrench, long|TW-60");
        QTest::keyClick(field(), Qt::Key_Down);
        QTest::keyClick(field(), Qt::Key_Return);
        QCOMPARE(desk->ui.lblAnswer->text(), "T2 Torque wrench, long is out: BAKER TOM, Job 1250.");
        type("wrench\n");
        QTreeView *list = desk->ui.lstLines;
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(0, 0)).center());
        QCOMPARE(crib->rows("Select Tool_Id from CheckOutIn order by ID"), QStringList({"2", "1"}));
        QVERIFY(field()->hasFocus());
    }

    void countsByScannerKeyAndFinger()
    {
        type("COUNT\nL1\n");
        QCOMPARE(line(0), "T1|Torque wrench|TW-40|Cabinet A");
        QTest::keyClick(field(), Qt::Key_Down);
        QTest::keyClick(field(), Qt::Key_Down); // T2, whatever is scanned meanwhile
        type("T3\n");
        auto *store = desk->findChild<QToolButton *>("cmdStore");
        QVERIFY(store->isVisible());
        QTest::mouseClick(store, Qt::LeftButton);
        QVERIFY(!store->isVisible());
        QCOMPARE(crib->rows("Select Location from Tools where ID=3"), QStringList("1"));
        QTest::keyClick(field(), Qt::Key_Space);
        QCOMPARE(desk->ui.lblWho->text(), "Count: 2 of 3 - Cabinet A");
        QTest::keyClick(desk.get(), Qt::Key_F5);
        QCOMPARE(line(0), "Missing|T1|Torque wrench|TW-40|Cabinet A");

        // A disk that is full: whoever holds a scanner is told so, and presses no OK.
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit none{.rlim_cur = 0, .rlim_max = before.rlim_max};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &none);
        QTest::keyClick(desk.get(), Qt::Key_F9);
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(desk->ui.lblAnswer->text().startsWith("That was not done."));
    }

    // The window lives on while the crib is held, and closes when nothing waits any more.
    void showsThatTheCribIsHeld()
    {
        type("E21\nJ1250\n");
        const auto other = Workspace::first().openDatabase(crib->path());
        dontWaitForOthers(Session::database());
        holdAll(*other);
        type("T1\nT2\n");
        QCOMPARE(sounds.last(), Answer::SoundWaiting);
        QVERIFY(!desk->close());
        other->executeNative("INSERT INTO [CheckOutIn] ([Tool_Id],[Employee],[DateOut],[Active]) "
                             "VALUES(1,'17','2026-03-04 13:05:00',-1)");
        other->executeNative("COMMIT");
        // Of what is answered at once, the worst is said, and stays to be seen.
        QTRY_COMPARE(desk->ui.lblAnswer->text(), "T1 Torque wrench was checked out meanwhile, by MILLER ANNA.");
        QCOMPARE(line(0).section('|', 1, 2), "Refused|" + desk->ui.lblAnswer->text());
        QCOMPARE(line(1), "13:05:00|Out|T2 Torque wrench, long|TW-60|BAKER TOM|Job 1250");
        QVERIFY(desk->close());
    }

private:
    ScanField *field() const { return desk->ui.txtScan; }
    void type(const QString &text)
    {
        for (const QChar character : text) {
            if (character == '\n')
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            else
                QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
        }
    }
    QString line(int row) const
    {
        const QAbstractItemModel *model = desk->ui.lstLines->model();
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column)
            texts.append(model->index(row, column).data().toString());
        return texts.join('|');
    }

    std::optional<CribDatabase> crib;
    std::unique_ptr<DeskWindow> desk;
    QList<Answer::Sound> sounds;
    QDateTime now;
};

QTEST_MAIN(TestDeskWindow)
#include "tst_deskwindow.moc"
