#include "platform/reportengine/FieldFormat.h"
#include <QTest>

class TestFieldFormat : public QObject
{
    Q_OBJECT

private slots:
    void prints()
    {
        const QString date = QStringLiteral("2024-03-04 13:05:09");
        const std::tuple<QString, Value, QString> cases[] = {
            {"General Date", date, date},
            {"month", date, "March 2024"},
            {"currency", -0.005, "($0.01)"},
            {"number 2", 1.005, "1.01"},
            {"number 4", 12, "12.0000"},
            {"yes/no", -1, "Yes"},
            {"upper", QString("stra\u00dfe \u00e4"), "STRA\u00dfE \u00c4"}};
        for (const auto &[name, value, text] : cases) {
            const std::optional<FieldFormat> format = FieldFormat::fromName(name);
            QVERIFY(format);
            QCOMPARE(format->apply(value), text);
            QCOMPARE(format->apply(Value()), QString());
        }
    }
};

QTEST_APPLESS_MAIN(TestFieldFormat)
#include "tst_fieldformat.moc"
