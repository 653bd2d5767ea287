#include "platform/reportengine/Code128.h"
#include <QTest>

class TestCode128 : public QObject
{
    Q_OBJECT

private slots:
    void encodes()
    {
        // Start, characters, check symbol, stop, each worked out by hand from the standard's table
        for (const auto &[text, widths] :
             {std::pair("PJJ123C", "211214 313121 112133 112133 123221 223211 221132 131321 311321 2331112"),
              {"12345", "211232 112232 131123 114131 213212 311123 2331112"}, // pairs of digits, then one left
              {"7", "211214 312131 311222 2331112"}, // few digits stay characters
              {"", ""},
              {"A\u00e9", ""},
              {"A\t", ""}}) {
            QString bars;
            for (const int width : Code128::encode(text))
                bars += QString::number(width);
            QCOMPARE(bars, QString(widths).remove(' '));
        }
    }

    // Whatever characters: eleven modules each, with start, check symbol and stop.
    void everyPatternIsWhole()
    {
        for (char c = ' '; c <= '~'; ++c) {
            const QString pairs = QStringLiteral("%1%2").arg(int(c), 4, 10, QChar('0')).arg(QChar(c));
            const std::vector<int> bars = Code128::encode(pairs);
            QCOMPARE(std::accumulate(bars.begin(), bars.end(), 0) % 11, 2);
        }
        const std::vector<int> bars = Code128::encode("12345678"); // 90 modules; 20 blank ones
        QCOMPARE(Code128::moduleWidth(bars, 1650), 16);
        QCOMPARE(Code128::moduleWidth(bars, 900), 0);
    }
};

QTEST_APPLESS_MAIN(TestCode128)
#include "tst_code128.moc"
