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
        row("General Date", date, "2024-03-04 13:05:09");
        row("month", date, "March 2024");
        row("currency", -0.005, "($0.01)");
        row("number 2", 1.005, "1.01");
        row("number 4", 12, "12.0000");
        row("yes/no", -1, "Yes");
        row("upper", QStringLiteral("stra\u00dfe \u00e4"), "STRA\u00dfE \u00c4");
    }

    void prints()
    {
        const auto [format, value] = fetched<QString, Value>("format", "value");
        const std::optional<FieldFormat> known = FieldFormat::fromName(format);
        QVERIFY(known);
        QTEST(known->apply(value), "text");
        QCOMPARE(known->apply(Value()), QString());
    }
};

QTEST_APPLESS_MAIN(TestFieldFormat)
#include "tst_fieldformat.moc"
