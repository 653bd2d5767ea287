#include "platform/gui/BoundCombo.h"
#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>
#include <QWheelEvent>

class TestBoundCombo : public QObject
{
    Q_OBJECT

private slots:
    void typing_data()
    {
        row("the beginning is completed", false, "wor", "Worn out", "5");
        row("a whole text is not made a longer one", false, "1250", "1250", "2");
        row("what is no row counts as empty", false, "99", QString(), QString());
        row("unless the text is free", true, "99", "99", QString());
        row("the only row that begins so completes a free text", true, "wor", "Worn out", "5");
        row("an accent need not be typed", false, "dvor", "DVOŘÁK", "6");
        row("a free text keeps its capitals", true, "WORN OUT", "WORN OUT", "5");
    }

    void typing()
    {
        const auto [freeText, typed, text, bound] = fetched<bool, QString, QString, QString>();
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
        QCOMPARE(box.text(), text);
        QCOMPARE(box.boundValue().toText(), bound);
    }

    void rowsOfTheSameTextStayApart()
    {
        BoundCombo box;
        box.setSource(rows(), "Name", "ID");
        QSignalSpy chosen(&box, &BoundCombo::chosen);
        box.setText("Miller");
        box.setText("Miller");
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(box.boundValue().toText(), "3");
        box.setCurrentIndex(box.findData("4"));
        QCOMPARE(box.text(), "Miller");
        QCOMPARE(box.boundValue().toText(), "4");
        // Leaving the box changes nothing.
        emit box.lineEdit()->editingFinished();
        QCOMPARE(box.boundValue().toText(), "4");
    }

    void rowsAreFetchedOnFirstUse()
    {
        int fetched = 0;
        ScriptedUser user(QMessageBox::Ok);
        BoundCombo box;
        box.setSource(
            [&] {
                if (fetched++ == 0)
                    throw EngineError(EngineError::lockedFile, "The file is in use.");
                return std::make_shared<Recordset>(rows());
            },
            "Name", "ID");
        box.show();
        QTest::keyClick(&box, Qt::Key_Return); // entered and left
        box.setText({});
        QCOMPARE(fetched, 0);
        box.showPopup();
        QCOMPARE(user.texts(), QStringList("The file is in use."));
        QApplication::clipboard()->setText("1250");
        box.lineEdit()->paste(); // tried again
        box.showPopup();
        QCOMPARE(fetched, 2);
        QCOMPARE(box.boundValue().toText(), "2");
        // Scrolling past it chooses nobody else.
        QWheelEvent wheel({}, {}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &wheel);
        QCOMPARE(box.boundValue().toText(), "2");
    }

private:
    Recordset rows() const { return m_database->openRecordset("Select ID,Name from Jobs order by ID"); }

    const EngineFile m_database{
        "CREATE TABLE Jobs (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT);"
        "INSERT INTO Jobs (Name) VALUES('12500'),('1250'),('Miller'),('Miller'),('Worn out'),('DVOŘÁK')"};
};

QTEST_MAIN(TestBoundCombo)
#include "tst_boundcombo.moc"
