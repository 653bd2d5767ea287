#pragma once

#include <QHash>
#include <QList>
#include <QString>

/// The locations of the crib, read once.
class Places
{
public:
    Places();

    bool contains(qint32 location) const { return m_places.contains(location); }
    QString name(qint32 location) const { return m_places.value(location).name; }
    /// From the top, or from `from`, down to it: "Cabinet A / Drawer 3".
    QString path(qint32 location, qint32 from = 0) const;
    /// It, and all below it.
    QList<qint32> within(qint32 location) const;
    /// Gives a tool another place: a step of an AtomicChange. @throws Refusal where it does not lie where it was seen.
    void move(qint16 tool, qint32 from, qint32 to) const;

private:
    struct Place {
        QString name;
        qint32 parent = 0;
    };
    QHash<qint32, Place> m_places;
    QMultiHash<qint32, qint32> m_children;
};
