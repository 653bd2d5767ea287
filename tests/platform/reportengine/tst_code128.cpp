#include "platform/reportengine/Code128.h"
#include "tests/support/DataRows.h"

#include <cmath>
#include <numeric>

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
    }

    void barsAreWholeDotsWide_data()
    {
        // 79 modules and 20 blank ones; the area begins within a dot.
        row("as coarse as may be", 600.0, 0, 3.0, 30);
        row("at the right", 600.0, int(Qt::AlignRight), 3.0, 302 + 30);
        row("in the middle", 600.0, int(Qt::AlignHCenter), 3.0, 151 + 30);
        row("as wide as its area", 298.0, 0, 3.0, 30);
        row("less than three dots", 297.0, 0, 2.0, 20);
        row("for other printers", 198.0, 0, 1.5, 15);
        row("too fine", 149.0, 0, 0.0, 0);
    }

    void barsAreWholeDotsWide()
    {
        const auto [dots, alignment, module, firstBar] = fetched<double, int, double, int>();
        const QRectF area(500.4 * Code128::dot, 7, dots * Code128::dot, 300);
        const QList<QRectF> bars = Code128::bars("12345678", area, Qt::Alignment(alignment));
        QCOMPARE(bars.isEmpty(), module == 0);
        const std::vector<int> widths = Code128::encode("12345678");
        for (int i = 0; i < bars.size(); ++i) {
            QCOMPARE(bars[i].width(), widths[size_t(2 * i)] * module * Code128::dot);
            const double edge = bars[i].left() / Code128::dot * (module == 1.5 ? 2 : 1);
            QVERIFY(std::abs(edge - std::round(edge)) < 1e-6);
            QVERIFY(bars[i].top() == area.top() && bars[i].bottom() == area.bottom());
        }
        if (!bars.isEmpty())
            QCOMPARE(int(std::round(bars.first().left() / Code128::dot)), 501 + firstBar);
    }
};

QTEST_APPLESS_MAIN(TestCode128)
#include "tst_code128.moc"
