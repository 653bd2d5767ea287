#include "platform/report/FieldFormat.h"
#include "tests/support/DataRows.h"

class TestFieldFormat : public QObject
{
    Q_OBJECT

private slots:
    void prints_data()
    {
        columns<QString, Value, QString>("format", "value", "text");
        const auto row = [](const char *format, const Value &value, const QString &text) {
            QTest::addRow("%s: %s", format, qPrintable(text)) << format << value << text;
        };
        const QString date = QStringLiteral("2024-03-04 13:05:09");
        row("short date", date, "2024-03-04");
        row("General Date", date, "2024-03-04 13:05:09");
        row("month", date, "March 2024");
        row("month", QStringLiteral("no date"), "no date");
        row("currency", 1234.5, "$1,234.50");
        row("currency", -0.005, "($0.01)");
        row("number 0", 2.5, "3");
        row("number 2", 1.005, "1.01");
        row("number 2", -1.005, "-1.01");
        row("number 4", 12, "12.0000");
        row("yes/no", -1, "Yes");
        row("yes/no", 0, "No");
        row("upper", QStringLiteral("stra\u00dfe \u00e4"), "STRA\u00dfE \u00c4");
    }

    void prints()
    {
        QFETCH(QString, format);
        QFETCH(Value, value);
        const std::optional<FieldFormat> known = FieldFormat::fromName(format);
        QVERIFY(known);
        QTEST(known->apply(value), "text");
    }

    void emptyValuesPrintNothing()
    {
        for (const char *name : {"short date", "general date", "month", "currency", "number 2", "yes/no", "upper"})
            QCOMPARE(FieldFormat::fromName(QString(name))->apply(Value()), QString());
        QCOMPARE(FieldFormat().apply(Value()), QString());
        QCOMPARE(FieldFormat().apply(0.1 + 0.2), "0.3");
        QVERIFY(!FieldFormat::fromName(u"number 5"));
    }
};

QTEST_APPLESS_MAIN(TestFieldFormat)
#include "tst_fieldformat.moc"
