#include "platform/text/Format.h"
#include "tests/support/DataRows.h"

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
        const std::pair<double, const char *> texts[] = {{0, "$0.00"},
                                                         {0.5, "$0.50"},
                                                         {12.345, "$12.35"},
                                                         {1.005, "$1.01"},
                                                         {999.999, "$1,000.00"},
                                                         {1234.5, "$1,234.50"},
                                                         {-1234567.8, "($1,234,567.80)"},
                                                         {-0.001, "$0.00"},
                                                         {922337203685477.0, "$922,337,203,685,477.00"}};
        for (const auto &[amount, text] : texts)
            row(text, amount, text);
    }

    void amounts()
    {
        QFETCH(double, amount);
        QTEST(Format::currency(amount), "text");
    }

    void plainNumbers_data()
    {
        columns<double, QString>("number", "text");
        const std::pair<double, const char *> texts[] = {{12.5, "12.5"},
                                                         {12, "12"},
                                                         {0.1 + 0.2, "0.3"},
                                                         {-0.00005, "-0.00005"},
                                                         {1234567.8901, "1234567.8901"},
                                                         {1e20, "100000000000000000000"},
                                                         {1.5e-10, "0.00000000015"}};
        for (const auto &[number, text] : texts)
            row(text, number, text);
    }

    void plainNumbers()
    {
        QFETCH(double, number);
        QTEST(Format::plainNumber(number), "text");
    }
};

QTEST_APPLESS_MAIN(TestFormat)
#include "tst_format.moc"
