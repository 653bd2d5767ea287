#include "platform/text/Format.h"
#include "tests/support/DataRows.h"

#include <QTest>

class TestFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }

    void dates()
    {
        const QDateTime when({2026, 3, 4}, {13, 5, 9});
        QCOMPARE(Format::generalDate(when), "2026-03-04 13:05:09");
        QCOMPARE(Format::dialogDate(when), "Mar-04-2026 13:05");
        QCOMPARE(Format::shortDate("2026-03-04 13:05:09"), "2026-03-04");
        QCOMPARE(Format::listDate("2026-03-04 13:05:09"), "03/04/26 13:05");
        QCOMPARE(Format::shortDate(""), "");
        QCOMPARE(Format::listDate(""), "");
    }

    void amounts_data()
    {
        columns<double, QString>("amount", "text");
        const auto add = [](double amount, const char *text) { row(text, amount, text); };
        add(0, "$0.00");
        add(0.5, "$0.50");
        add(12.345, "$12.35");
        add(1.005, "$1.01"); // its binary fraction lies below
        add(999.999, "$1,000.00");
        add(1234.5, "$1,234.50");
        add(-1234567.8, "($1,234,567.80)");
        add(-0.001, "$0.00");
        add(922337203685477.0, "$922,337,203,685,477.00");
    }

    void amounts()
    {
        QFETCH(double, amount);
        QTEST(Format::currency(amount), "text");
    }

    void plainNumbers_data()
    {
        columns<double, QString>("number", "text");
        const auto add = [](double number, const char *text) { row(text, number, text); };
        add(12.5, "12.5");
        add(12, "12");
        add(0.1 + 0.2, "0.3");
        add(-0.00005, "-0.00005");
        add(1234567.8901, "1234567.8901");
        add(1e20, "100000000000000000000");
        add(1.5e-10, "0.00000000015");
    }

    void plainNumbers()
    {
        QFETCH(double, number);
        QTEST(Format::plainNumber(number), "text");
    }
};

QTEST_APPLESS_MAIN(TestFormat)
#include "tst_format.moc"
