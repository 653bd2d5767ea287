
#include <QColor>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

/// The program's pictures can be made out wherever they stand.
class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void linesStandOutOnLightAndDark()
    {
        static const QRegularExpression stroke("stroke=.(#\\w{6})");
        for (QDirIterator files(PROGRAM_DATA "/icons", {"*.svg"}); files.hasNext();) {
            QFile file(files.next());
            QVERIFY(file.open(QFile::ReadOnly));
            // The logo is a plate with a light edge; the edge stands out on dark, the plate on light.
            if (files.fileName() == "vorlane.svg")
                continue;
            const QString svg = file.readAll();
            for (auto lines = stroke.globalMatch(svg); lines.hasNext();) {
                const QString colour = lines.next().captured(1);
                for (const char *behind : {"#ffffff", "#efefef", "#353535"})
                    QVERIFY2(contrast(colour, behind) >= 3, qPrintable(files.fileName() + colour + behind));
            }
        }
    }

private:
    // As the Web Content Accessibility Guidelines have it
    static double contrast(const QColor &a, const QColor &b)
    {
        const auto luminance = [](const QColor &colour) {
            const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
            return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
        };
        const auto [low, high] = std::minmax({luminance(a), luminance(b)});
        return (high + 0.05) / (low + 0.05);
    }
};

QTEST_MAIN(TestIcons)
#include "tst_icons.moc"
