#include "platform/reportengine/TextMeasure.h"

#include "platform/system/ProgramFolder.h"

#include <QDir>
#include <QFontDatabase>
#include <QTextLayout>

#include <mutex>

namespace {
// Reports repeat few texts often; a new set begins when this one has grown so far.
constexpr qsizetype maxWrappedTexts = 5000;
// No line of a page shows more characters; a longer text is not measured to its end.
constexpr qsizetype maxLineCharacters = 4000;

// With the same fonts lines break alike on every system; where a system has them, none come with the program.
void addShippedFonts()
{
    for (const QString &folder : ProgramFolder::folders())
        for (const QFileInfo &font : QDir(folder + "/fonts").entryInfoList({"*.ttf"}))
            QFontDatabase::addApplicationFont(font.filePath());
}

}

TextMeasure::TextMeasure(const QString &family) : m_family(family)
{
    static std::once_flag once;
    std::call_once(once, addShippedFonts);
}

const TextMeasure::Face &TextMeasure::face(double size, bool bold)
{
    const int pixels = qRound(size * twipsPerPoint);
    const auto known = m_faces.find({pixels, bold});
    if (known != m_faces.end())
        return known->second;
    QFont font({m_family, QStringLiteral("Liberation Sans"), QStringLiteral("sans-serif")});
    font.setPixelSize(pixels);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF metrics(font);
    return m_faces.insert({{pixels, bold}, {font, metrics, std::ceil(metrics.height() * 1.12)}}).first->second;
}

double TextMeasure::baseline(double size, bool bold)
{
    const Face &face = this->face(size, bold);
    return face.metrics.ascent() + (lineHeight(size) - face.metrics.height()) / 2;
}

double TextMeasure::width(const QString &text, double size, bool bold)
{
    return face(size, bold).metrics.horizontalAdvance(text);
}

QString TextMeasure::elided(const QString &text, double width, double size, bool bold, Qt::TextElideMode mode)
{
    return face(size, bold).metrics.elidedText(text.left(maxLineCharacters), mode, width);
}

QStringList TextMeasure::wrapped(const QString &text, double width, double size, bool bold)
{
    const Face &face = this->face(size, bold);
    const WrapKey key{text, int(width), face.font.pixelSize(), bold};
    const auto known = m_wrapped.constFind(key);
    if (known != m_wrapped.constEnd())
        return *known;
    QStringList lines;
    for (const QString &paragraph : text.split('\n'))
        lines += brokenLines(paragraph, width, face);
    if (m_wrapped.size() >= maxWrappedTexts)
        m_wrapped.clear();
    return *m_wrapped.insert(key, lines);
}

QStringList TextMeasure::brokenLines(const QString &paragraph, double width, const Face &face) const
{
    if (paragraph.size() < maxLineCharacters && face.metrics.horizontalAdvance(paragraph) <= width)
        return {paragraph};
    QTextLayout layout(paragraph, face.font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const auto text = [&] { return paragraph.mid(line.textStart(), line.textLength()).trimmed(); };
        // The last letter takes more room at a line's end than close to the blank that follows it in the text.
        if (face.metrics.horizontalAdvance(text()) > width)
            line.setLineWidth(line.naturalTextWidth() - 1);
        lines.append(text());
    }
    layout.endLayout();
    return lines;
}
