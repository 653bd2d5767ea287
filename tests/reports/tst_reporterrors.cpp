#include "reports/ReportErrors.h"
#include "tests/support/ScriptedUser.h"

class TestReportErrors : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeOfTheTableHasItsText()
    {
        ScriptedUser once(QMessageBox::Ok);
        qint16 last = 20557;
        QCOMPARE(ModMain::ShowReportError(last), "20557:  Graph col Value Cannot be Changed");
        QCOMPARE(once.boxes(),
                 QStringList("Crystal Reports Error (critical): 20557:  Graph col Value Cannot be Changed [OK]"));
        const QList<int> unknown{20516, 20518, 20519, 20523, 20528, 20549, 20551, 20556, 20558};
        for (qint16 code = 20500; code <= 20558; ++code) {
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
