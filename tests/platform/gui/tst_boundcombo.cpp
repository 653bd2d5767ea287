#include "platform/engine/Workspace.h"
#include "platform/gui/BoundCombo.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

class TestBoundCombo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typing_data();
    void typing();
    void textSetByTheProgram_data();
    void textSetByTheProgram();
    void rowsOfTheSameTextStayApart();
    void clearedSourceOffersNothing();
    void everyRowOfferedBelowCanBeTaken();
    void rowsAreFetchedOnFirstUse_data();
    void rowsAreFetchedOnFirstUse();
    void rowsThatCannotBeFetchedAreTriedAgain();

private:
    Recordset rows() const { return m_database->openRecordset("Select ID,Name from Jobs order by ID"); }

    QTemporaryDir m_folder;
    std::unique_ptr<Database> m_database;
};

void TestBoundCombo::initTestCase()
{
    m_database = Workspace::first().createDatabase(m_folder.filePath("jobs.mdb"));
    m_database->executeNative("CREATE TABLE Jobs (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT)");
    for (const char *name : {"12500", "1250", "Miller", "Miller", "Worn out"})
        m_database->execute(QStringLiteral("INSERT INTO Jobs (Name) VALUES('%1')").arg(name));
}

void TestBoundCombo::typing_data()
{
    QTest::addColumn<bool>("freeText");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("bound");

    QTest::newRow("the beginning is completed") << false << "wor"
                                                << "Worn out"
                                                << "5";
    QTest::newRow("a whole text is not made a longer one") << false << "1250"
                                                           << "1250"
                                                           << "2";
    QTest::newRow("what is no row counts as empty") << false << "99" << QString() << QString();
    QTest::newRow("unless the text is free") << true << "99"
                                             << "99" << QString();
    QTest::newRow("a free text is not made a longer one") << true << "Wor"
                                                          << "Wor" << QString();
    QTest::newRow("a free text keeps its capitals") << true << "WORN OUT"
                                                    << "WORN OUT"
                                                    << "5";
}

void TestBoundCombo::typing()
{
    QFETCH(bool, freeText);
    QFETCH(QString, typed);
    BoundCombo box;
    box.setProperty("freeText", freeText);
    box.setSource(rows(), "Name", "ID");
    QSignalSpy chosen(&box, &BoundCombo::chosen);
    box.show();
    box.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&box));

    QTest::keyClicks(&box, typed);
    QCOMPARE(chosen.count(), 0);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(chosen.count(), 1);
    QTEST(box.text(), "text");
    QTEST(box.boundValue().toText(), "bound");
}

void TestBoundCombo::textSetByTheProgram_data()
{
    QTest::addColumn<bool>("freeText");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("bound");

    QTest::newRow("finds its row in any case") << false << "WORN OUT"
                                               << "Worn out"
                                               << "5";
    QTest::newRow("keeps its capitals where it is free") << true << "WORN OUT"
                                                         << "WORN OUT"
                                                         << "5";
    QTest::newRow("is no choice without a row") << false << "Bent" << QString() << QString();
}

void TestBoundCombo::textSetByTheProgram()
{
    QFETCH(bool, freeText);
    QFETCH(QString, text);
    BoundCombo box;
    box.setProperty("freeText", freeText);
    box.setSource(rows(), "Name", "ID");
    QSignalSpy chosen(&box, &BoundCombo::chosen);

    box.setText(text);
    QCOMPARE(chosen.count(), 1);
    QTEST(box.text(), "shown");
    QTEST(box.boundValue().toText(), "bound");
    box.setText(text);
    QCOMPARE(chosen.count(), 1);
}

void TestBoundCombo::rowsOfTheSameTextStayApart()
{
    BoundCombo box;
    box.setSource(rows(), "Name", "ID");
    box.setText("Miller");
    QCOMPARE(box.boundValue().toText(), "3");
    box.setCurrentIndex(box.findData("4"));
    QCOMPARE(box.text(), "Miller");
    QCOMPARE(box.boundValue().toText(), "4");
    // Leaving the box changes nothing.
    emit box.lineEdit()->editingFinished();
    QCOMPARE(box.boundValue().toText(), "4");
}

void TestBoundCombo::clearedSourceOffersNothing()
{
    BoundCombo box;
    box.setSource(rows(), "Name", "ID");
    box.setText("1250");
    box.clearSource();
    QCOMPARE(box.count(), 0);
    QCOMPARE(box.text(), QString());
    QVERIFY(box.boundValue().isNull());
    QTest::keyClicks(&box, "1250");
    QCOMPARE(box.text(), QString());
}

void TestBoundCombo::everyRowOfferedBelowCanBeTaken()
{
    BoundCombo box;
    box.setFreeText(true);
    box.setSource(rows(), "Name", "ID");
    QCompleter *completer = box.completer();
    completer->setCompletionPrefix("1250");
    QStringList offered;
    for (int row = 0; row < completer->completionModel()->rowCount(); ++row)
        offered.append(completer->pathFromIndex(completer->completionModel()->index(row, 0)));
    QCOMPARE(offered, (QStringList{"12500", "1250"}));
}

void TestBoundCombo::rowsAreFetchedOnFirstUse_data()
{
    using Use = std::function<void(BoundCombo &)>;
    QTest::addColumn<Use>("use");
    QTest::addColumn<int>("fetched");
    QTest::addColumn<QString>("bound");

    QTest::newRow("not when it is entered and left") << Use([](BoundCombo &box) {
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::keyClick(&box, Qt::Key_Escape);
        box.setText({});
    }) << 0 << QString();
    QTest::newRow("when it is opened") << Use([](BoundCombo &box) {
        box.showPopup();
        box.hidePopup();
        box.showPopup();
    }) << 1 << QString();
    QTest::newRow("when it is typed into") << Use([](BoundCombo &box) { QTest::keyClicks(&box, "1250"); }) << 1 << "2";
    QTest::newRow("when it is stepped through")
        << Use([](BoundCombo &box) { QTest::keyClick(&box, Qt::Key_Down); }) << 1 << "1";
    QTest::newRow("when a text is pasted") << Use([](BoundCombo &box) {
        QApplication::clipboard()->setText("1250");
        box.lineEdit()->paste();
    }) << 1 << "2";
    QTest::newRow("when a text is set") << Use([](BoundCombo &box) { box.setText("12500"); }) << 1 << "1";
}

void TestBoundCombo::rowsAreFetchedOnFirstUse()
{
    QFETCH(std::function<void(BoundCombo &)>, use);
    int fetched = 0;
    BoundCombo box;
    box.setSource(
        [&] {
            ++fetched;
            return std::make_shared<Recordset>(rows());
        },
        "Name", "ID");
    box.show();
    QCOMPARE(fetched, 0);
    use(box);
    QTEST(fetched, "fetched");
    QTEST(box.boundValue().toText(), "bound");
}

void TestBoundCombo::rowsThatCannotBeFetchedAreTriedAgain()
{
    bool locked = true;
    ScriptedUser user;
    BoundCombo box;
    box.setSource(
        [&] {
            if (locked)
                throw EngineError(EngineError::lockedFile, "The file is in use.");
            return std::make_shared<Recordset>(rows());
        },
        "Name", "ID");
    user.answers(QMessageBox::Ok);
    box.showPopup();
    QCOMPARE(user.texts(), QStringList("The file is in use."));
    QCOMPARE(box.count(), 0);
    locked = false;
    box.showPopup();
    QCOMPARE(box.count(), 5);
}

QTEST_MAIN(TestBoundCombo)
#include "tst_boundcombo.moc"
