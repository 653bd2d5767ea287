#include "platform/text/Format.h"

#include <QtTest>

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
        QCOMPARE(Format::listDate("2026-03-04 13:05:09"), "03/04/26 13:05");
        QCOMPARE(Format::shortDate(""), "");
        QCOMPARE(Format::listDate(""), "");
    }

    void amounts()
    {
        QCOMPARE(Format::currency(12.345), "$12.35");
        QCOMPARE(Format::currency(1.005), "$1.01");
        QCOMPARE(Format::currency(999.999), "$1,000.00");
        QCOMPARE(Format::currency(-1234567.8), "($1,234,567.80)");
        QCOMPARE(Format::currency(-0.001), "$0.00");
        QCOMPARE(Format::currency(922337203685477.0), "$922,337,203,685,477.00");
    }

    void plainNumbers()
    {
        QCOMPARE(Format::plainNumber(0.1 + 0.2), "0.3");
        QCOMPARE(Format::plainNumber(-0.00005), "-0.00005");
        QCOMPARE(Format::plainNumber(1234567.8901), "1234567.8901");
        QCOMPARE(Format::plainNumber(1.5e-10), "0.00000000015");
    }
};

QTEST_APPLESS_MAIN(TestFormat)
#include "tst_format.moc"
