#include "platform/text/TextCompare.h"
#include "tests/support/DataRows.h"

class TestTextCompare : public QObject
{
    Q_OBJECT

private slots:
    void order_data()
    {
        row("case does not count", QStringList{"axe", "Bit", "bits", "Cutter"});
        row("marks, digits, letters", QStringList{"", " ", "#8", "{a}", "~", "1", "10", "2", "a", "Z"});
        row("marks stay before letters in any company", QStringList{"{", "{é", "é{", "éa"});
        row("accents after their base letter", QStringList{"e", "é", "ea", "ez", "f"});
        row("the base letters decide first", QStringList{"Äxte", "axtz", "äxtz", "b"});
        row("other scripts behind the Latin one", QStringList{"z", "Ω", "Ж", "ж1"});
        row("a mark of its own behind the letter", QStringList{"a", QString("a") + QChar(0x301), "ab"});
    }

    void order()
    {
        const auto [sorted] = fetched<QStringList>();
        const auto sign = [](int value) { return (value > 0) - (value < 0); };
        for (const QString &a : sorted) {
            for (const QString &b : sorted) {
                const auto expected = sign(int(sorted.indexOf(a) - sorted.indexOf(b)));
                QCOMPARE(sign(compareText(QStringView(a), QStringView(b))), expected);
                QCOMPARE(sign(compareText(std::string_view(a.toStdString()), std::string_view(b.toStdString()))),
                         expected);
            }
        }
    }

    void capitalsStayEqual()
    {
        for (const auto &[a, b] : {std::pair("ÄÖÜ Éclair Ж", "äöü éclair ж"), {"𐐀", "𐐨"}, {"ΣΑΣ", "σας"}}) {
            QCOMPARE(compareText(std::string_view(a), std::string_view(b)), 0);
            QCOMPARE(foldCase(a), foldCase(b));
        }
        QVERIFY(foldCase("Maß") != foldCase("Mass"));
        const QString text = QString::fromUtf8("groß 𐐨 éa");
        QCOMPARE(upperCase(text), QString::fromUtf8("GROß 𐐀 ÉA"));
        QCOMPARE(compareText(QStringView(upperCase(text)), QStringView(text)), 0);
    }
};

QTEST_APPLESS_MAIN(TestTextCompare)
#include "tst_textcompare.moc"
