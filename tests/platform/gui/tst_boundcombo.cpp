#include "platform/gui/BoundCombo.h"
#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>

class TestBoundCombo : public QObject
{
    Q_OBJECT

private slots:
    void typing_data()
    {
        columns<bool, QString, QString, QString>("freeText", "typed", "text", "bound");
        row("the beginning is completed", false, "wor", "Worn out", "5");
        row("a whole text is not made a longer one", false, "1250", "1250", "2");
        row("what is no row counts as empty", false, "99", QString(), QString());
        row("unless the text is free", true, "99", "99", QString());
        row("the only row that begins so completes a free text", true, "wor", "Worn out", "5");
        row("of several none does", true, "125", "125", QString());
        row("an accent need not be typed", false, "dvor", "DVOŘÁK", "6");
        row("a free text keeps its capitals", true, "WORN OUT", "WORN OUT", "5");
    }

    void typing()
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

    void textSetByTheProgram()
    {
        BoundCombo box;
        box.setSource(rows(), "Name", "ID");
        QSignalSpy chosen(&box, &BoundCombo::chosen);
        const auto shown = [&](const QString &text) {
            box.setText(text);
            return box.text() + '|' + box.boundValue().toText();
        };
        QCOMPARE(shown("WORN OUT"), "Worn out|5"); // in any case
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(shown("WORN OUT"), "Worn out|5");
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(shown("Bent"), "|"); // no choice without a row
        box.setFreeText(true);
        QCOMPARE(shown("WORN OUT"), "WORN OUT|5"); // keeps its capitals
        QCOMPARE(chosen.count(), 3);
    }

    void rowsOfTheSameTextStayApart()
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

    void rowsAreFetchedOnFirstUse_data()
    {
        using Use = std::function<void(BoundCombo &)>;
        columns<Use, int, QString>("use", "fetched", "bound");
        row("not when it is entered and left", Use([](BoundCombo &box) {
                QTest::keyClick(&box, Qt::Key_Return);
                QTest::keyClick(&box, Qt::Key_Escape);
                box.setText({});
            }),
            0, QString());
        row("when it is opened", Use([](BoundCombo &box) {
                box.showPopup();
                box.hidePopup();
                box.showPopup();
            }),
            1, QString());
        row("when it is typed into", Use([](BoundCombo &box) { QTest::keyClicks(&box, "1250"); }), 1, "2");
        row("when it is stepped through", Use([](BoundCombo &box) { QTest::keyClick(&box, Qt::Key_Down); }), 1, "1");
        row("when a text is pasted", Use([](BoundCombo &box) {
                QApplication::clipboard()->setText("1250");
                box.lineEdit()->paste();
            }),
            1, "2");
        row("when a text is set", Use([](BoundCombo &box) { box.setText("12500"); }), 1, "1");
    }

    void rowsAreFetchedOnFirstUse()
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

    void rowsThatCannotBeFetchedAreTriedAgain()
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
        QCOMPARE(box.count(), 6);
    }

private:
    Recordset rows() const { return m_database->openRecordset("Select ID,Name from Jobs order by ID"); }

    const EngineFile m_database{
        "CREATE TABLE Jobs (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT);"
        "INSERT INTO Jobs (Name) VALUES('12500'),('1250'),('Miller'),('Miller'),('Worn out'),('DVOŘÁK')"};
};

QTEST_MAIN(TestBoundCombo)
#include "tst_boundcombo.moc"
