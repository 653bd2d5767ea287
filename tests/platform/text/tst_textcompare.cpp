#include "platform/text/TextCompare.h"

#include <QTest>

class TestTextCompare : public QObject
{
    Q_OBJECT

private slots:
    void order_data();
    void order();
    void sameTexts_data();
    void sameTexts();
    void capitalsStayEqual();
};

void TestTextCompare::order_data()
{
    QTest::addColumn<QStringList>("sorted");
    QTest::newRow("case does not count") << QStringList{"axe", "Bit", "bits", "Cutter"};
    QTest::newRow("marks, digits, letters") << QStringList{"", " ", "#8", "{a}", "~", "1", "10", "2", "a", "Z"};
    QTest::newRow("marks stay before letters in any company") << QStringList{"{", "{é", "é{", "éa"};
    QTest::newRow("accents after their base letter") << QStringList{"e", "é", "ea", "ez", "f"};
    QTest::newRow("the base letters decide first") << QStringList{"Äxte", "axtz", "äxtz", "b"};
    QTest::newRow("the shorter text first") << QStringList{"tap", "Tap M", "tap m6"};
    QTest::newRow("other scripts behind the Latin one") << QStringList{"z", "Ω", "Ж", "ж1"};
    QTest::newRow("characters beyond 16 bits")
        << QStringList{QString::fromUtf8("a"), QString::fromUtf8("𐐨"), QString::fromUtf8("𐐩")};
    QTest::newRow("a mark of its own behind the letter") << QStringList{"a", QString("a") + QChar(0x301), "ab"};
    QTest::newRow("syllables keep their order")
        << QStringList{QString::fromUtf8("가"), QString::fromUtf8("각"), QString::fromUtf8("나")};
}

void TestTextCompare::order()
{
    QFETCH(QStringList, sorted);
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (const QString &a : sorted) {
        for (const QString &b : sorted) {
            const auto expected = sign(int(sorted.indexOf(a) - sorted.indexOf(b)));
            QCOMPARE(sign(compareText(QStringView(a), QStringView(b))), expected);
            QCOMPARE(sign(compareText(std::string_view(a.toStdString()), std::string_view(b.toStdString()))), expected);
        }
    }
}

void TestTextCompare::sameTexts_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("same");
    QTest::newRow("other case") << "Tap M8"
                                << "TAP m8" << true;
    QTest::newRow("other case beyond ASCII")
        << QString::fromUtf8("ÄÖÜ Éclair Ж") << QString::fromUtf8("äöü éclair ж") << true;
    QTest::newRow("other case beyond 16 bits") << QString::fromUtf8("𐐀") << QString::fromUtf8("𐐨") << true;
    QTest::newRow("the two small sigmas") << QString::fromUtf8("ΣΑΣ") << QString::fromUtf8("σας") << true;
    QTest::newRow("an accent") << QString::fromUtf8("é") << "e" << false;
    QTest::newRow("one letter for two") << QString::fromUtf8("Maß") << "Mass" << false;
    QTest::newRow("a blank at the end") << "a"
                                        << "a " << false;
}

void TestTextCompare::sameTexts()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QTEST(compareText(QStringView(a), QStringView(b)) == 0, "same");
    QTEST(compareText(std::string_view(a.toStdString()), std::string_view(b.toStdString())) == 0, "same");
    QTEST(foldCase(a) == foldCase(b), "same");
}

void TestTextCompare::capitalsStayEqual()
{
    const QString text = QString::fromUtf8("groß 𐐨 éa");
    QCOMPARE(upperCase(text), QString::fromUtf8("GROß 𐐀 ÉA"));
    QCOMPARE(compareText(QStringView(upperCase(text)), QStringView(text)), 0);
}

QTEST_APPLESS_MAIN(TestTextCompare)
#include "tst_textcompare.moc"
