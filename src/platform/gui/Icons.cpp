#include "platform/gui/Icons.h"

#include <QDir>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>

namespace {

// A picture is one drawing or, where Qt has no plug-in for drawings, a file for each size.
void add(QIcon &icon, const QString &name, QIcon::State state = QIcon::Off)
{
    const QDir icons(":/icons");
    for (const QString &file : icons.entryList({name + ".svg", name + "_*.png"}))
        icon.addFile(icons.filePath(file), {}, QIcon::Normal, state);
}

QPixmap inWhite(QPixmap picture)
{
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), Qt::white);
    return picture;
}

// The lines are of a middle brightness, at least 3 to 1 against light and dark backgrounds. So is the bar of a
// selection; there the picture gets a white rim. It keeps its colours: tinted, its states could not be told apart.
class RimmedEngine : public QIconEngine
{
public:
    explicit RimmedEngine(const QIcon &picture) : m_picture(picture) { }
    QIconEngine *clone() const override { return new RimmedEngine(*this); }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap(rect.size() * ratio, mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        if (mode != QIcon::Selected)
            return m_picture.pixmap(size, 1, mode, state);
        const QString key =
            QStringLiteral("rim %1 %2 %3 %4").arg(m_picture.cacheKey()).arg(size.width()).arg(size.height()).arg(state);
        QPixmap rimmed;
        if (!QPixmapCache::find(key, &rimmed)) {
            rimmed = withRim(m_picture.pixmap(size, 1, QIcon::Normal, state));
            QPixmapCache::insert(key, rimmed);
        }
        return rimmed;
    }

private:
    static QPixmap withRim(const QPixmap &picture)
    {
        constexpr qreal share = 1.0 / 16; // of the side
        const qreal rim = picture.width() * share;
        const QPixmap white = inWhite(picture);
        QPixmap whole(picture.size());
        whole.fill(Qt::transparent);
        QPainter painter(&whole);
        for (const qreal dx : {-rim, 0.0, rim})
            for (const qreal dy : {-rim, 0.0, rim})
                painter.drawPixmap(QPointF(dx, dy), white);
        painter.drawPixmap(0, 0, picture);
        return whole;
    }

    QIcon m_picture;
};

}

QIcon Icons::icon(const QString &name)
{
    static QHash<QString, QIcon> made;
    auto found = made.find(name);
    if (found == made.end()) {
        QIcon picture;
        add(picture, name);
        found = made.insert(name, QIcon(new RimmedEngine(picture)));
    }
    return *found;
}

QIcon Icons::folder()
{
    static const QIcon made = [] {
        QIcon picture;
        add(picture, QStringLiteral("folder"));
        add(picture, QStringLiteral("folder-open"), QIcon::On);
        return QIcon(new RimmedEngine(picture));
    }();
    return made;
}
