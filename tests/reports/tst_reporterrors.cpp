#include "reports/ReportErrors.h"
#include "tests/support/DataRows.h"

#include "tests/support/ScriptedUser.h"

class TestReportErrors : public QObject
{
    Q_OBJECT

private slots:
    void message_data()
    {
        columns<int, QString>("code", "message");
        row("first", 20500,
            "20500:  Not Enough Memory For Operation or Not Enough Memory To Get Selection Formula "
            "or Cannot Get Selection Formula.  The report holds more records or pages, or its formula "
            "more conditions, than can be handled.");
        row("with a sentence", 20515,
            "20515:  Error In Formula.  There is a formula error in the replacement formula "
            "text. Review the formula syntax and retry.");
        row("without one", 20545, "20545:  User Has Cancelled Operation");
        row("last", 20557, "20557:  Graph col Value Cannot be Changed");
        row("missing in the table", 20516, "20516:  Unknown Error!");
        row("beyond it", 20558, "20558:  Unknown Error!");
        row("negative", -1, "-1:  Unknown Error!");
    }

    void message()
    {
        QFETCH(int, code);
        ScriptedUser user(QMessageBox::Ok);
        qint16 resultCode = qint16(code);
        QTEST(ModMain::ShowReportError(resultCode), "message");
        QFETCH(QString, message);
        QCOMPARE(user.boxes(), QStringList("Crystal Reports Error (critical): " + message + " [OK]"));
    }

    void everyCodeOfTheTableHasItsText()
    {
        const QList<int> unknown{20516, 20518, 20519, 20523, 20528, 20549, 20551, 20556};
        for (qint16 code = 20500; code <= 20557; ++code) {
            ScriptedUser user(QMessageBox::Ok);
            const QString text = ModMain::ShowReportError(code);
            QCOMPARE(text.endsWith("Unknown Error!"), unknown.contains(code));
            QVERIFY(text.startsWith(QString::number(code) + ":  "));
            QVERIFY(!text.mid(8).contains("   ") && text == text.trimmed());
        }
    }
};

QTEST_MAIN(TestReportErrors)
#include "tst_reporterrors.moc"
