#include "transactions/MainSubs.h"

#include <QTest>

class TestFilterKey : public QObject
{
    Q_OBJECT

private slots:
    void keepsOrDrops_data();
    void keepsOrDrops();
};

void TestFilterKey::keepsOrDrops_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("allowed");
    QTest::addColumn<bool>("allowBackspace");
    QTest::addColumn<QString>("disallowed");
    QTest::addColumn<bool>("kept");

    QTest::newRow("star allows everything") << int('q') << "*" << false << "" << true;
    QTest::newRow("but what is disallowed") << int('\'') << "*" << true << "|'\\\"" << false;
    QTest::newRow("allowed in either case") << int('a') << "XYZA" << false << "" << true;
    QTest::newRow("allowed given in small letters") << int('A') << "xyza" << false << "" << true;
    QTest::newRow("not among the allowed") << int('b') << "0123" << false << "" << false;
    QTest::newRow("allowed and disallowed") << int('a') << "abc" << false << "A" << false;
    QTest::newRow("backspace") << 8 << "0123" << true << "" << true;
    QTest::newRow("backspace not allowed") << 8 << "0123" << false << "" << false;
    QTest::newRow("a star among others is only a star") << int('b') << "*12" << false << "" << false;
}

void TestFilterKey::keepsOrDrops()
{
    QFETCH(int, key);
    QFETCH(QString, allowed);
    QFETCH(bool, allowBackspace);
    QFETCH(QString, disallowed);
    QFETCH(bool, kept);
    QCOMPARE(MainSubs::FilterKey(key, allowed, allowBackspace, disallowed), kept ? key : 0);
}

QTEST_APPLESS_MAIN(TestFilterKey)
#include "tst_filterkey.moc"
