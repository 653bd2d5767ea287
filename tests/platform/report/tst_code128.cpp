#include "platform/report/Code128.h"
#include "tests/support/DataRows.h"

class TestCode128 : public QObject
{
    Q_OBJECT

private slots:
    void encodes_data()
    {
        columns<QString, QString>("text", "widths");
        // Start, characters, check symbol, stop, each worked out by hand from the standard's table
        row("characters", "PJJ123C", "211214 313121 112133 112133 123221 223211 221132 131321 311321 2331112");
        row("pairs of digits, then one left", "12345", "211232 112232 131123 114131 213212 311123 2331112");
        row("few digits stay characters", "7", "211214 312131 311222 2331112");
        row("nothing", "", "");
        row("beyond ASCII", "A\u00e9", "");
        row("control character", "A\t", "");
    }

    void encodes()
    {
        QFETCH(QString, text);
        QFETCH(QString, widths);
        QCOMPARE(bars(text), widths.remove(' '));
    }

    void everyCharacterHasElevenModules()
    {
        const auto modules = [](const QString &text) {
            const std::vector<int> bars = Code128::encode(text);
            return std::accumulate(bars.begin(), bars.end(), 0);
        };
        constexpr int frame = 3 * 11 + 2; // start, check symbol and stop
        QSet<QString> seen;
        for (char c = ' '; c <= '~'; ++c) {
            QCOMPARE(modules(QString(QChar(c))), frame + 11);
            seen.insert(bars(QString(QChar(c))));
        }
        QCOMPARE(seen.size(), '~' - ' ' + 1);
        for (int pair = 0; pair < 100; ++pair)
            QCOMPARE(modules(QStringLiteral("%1%1").arg(pair, 2, 10, QChar('0'))), frame + 2 * 11);
    }

    void fits()
    {
        const std::vector<int> bars =
            Code128::encode("12345678"); // 90 modules with start, check and stop; 20 blank ones
        QCOMPARE(Code128::moduleWidth(bars, 10'000), 20);
        QCOMPARE(Code128::moduleWidth(bars, 1650), 16);
        QCOMPARE(Code128::moduleWidth(bars, 900), 0);
        QCOMPARE(Code128::moduleWidth({}, 10'000), 0);
    }

private:
    static QString bars(const QString &text)
    {
        QString widths;
        for (const int width : Code128::encode(text))
            widths += QString::number(width);
        return widths;
    }
};

QTEST_APPLESS_MAIN(TestCode128)
#include "tst_code128.moc"
