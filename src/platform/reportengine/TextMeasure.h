#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QStringList>

#include <map>

/// Measures and breaks texts in twips, the same for every device that the page may be shown on.
class TextMeasure
{
public:
    static constexpr double twipsPerPoint = 20;
    static constexpr double twipsPerInch = 1440;

    /// The fonts that come with the program are known from then on.
    explicit TextMeasure(const QString &family);

    /// A font whose pixels are twips. `size` is in points here and below.
    const QFont &font(double size, bool bold) { return face(size, bold).font; }
    /// From the top of a line to the base line that the letters stand on.
    double baseline(double size, bool bold);
    /// From one line to the next, for regular and bold texts alike.
    double lineHeight(double size) { return face(size, false).lineHeight; }
    double width(const QString &text, double size, bool bold);
    /// `text` on one line, cut with an ellipsis where it is wider than `width`.
    QString elided(const QString &text, double width, double size, bool bold, Qt::TextElideMode mode = Qt::ElideRight);
    /// The lines of `text`, none wider than `width`; at least one.
    QStringList wrapped(const QString &text, double width, double size, bool bold);

private:
    struct Face {
        QFont font;
        QFontMetricsF metrics;
        double lineHeight;
    };
    struct WrapKey {
        QString text;
        int width;
        int pixels;
        bool bold;
        bool operator==(const WrapKey &) const = default;
        friend size_t qHash(const WrapKey &key, size_t seed)
        {
            return qHashMulti(seed, key.text, key.width, key.pixels, key.bold);
        }
    };
    const Face &face(double size, bool bold);
    QStringList brokenLines(const QString &paragraph, double width, const Face &face) const;

    QString m_family;
    std::map<std::pair<int, bool>, Face> m_faces;
    QHash<WrapKey, QStringList> m_wrapped;
};
