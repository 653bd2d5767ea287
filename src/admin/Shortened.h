#pragma once

#include <QStringList>

/// At most `most` of a list, then `more` with the number of the others for its %1.
inline QStringList shortened(const QStringList &list, qsizetype most, const QString &more)
{
    return list.size() <= most ? list : list.first(most) + QStringList(more.arg(list.size() - most));
}
