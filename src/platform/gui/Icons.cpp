#include "platform/gui/Icons.h"

#include <QHash>

namespace {

QString file(const QString &name) { return QStringLiteral(":/icons/%1.svg").arg(name); }

// Selected or not, a picture keeps its colours; tinted, its states could not be told apart.
QIcon inAllModes(const QString &name)
{
    QIcon icon(file(name));
    icon.addFile(file(name), {}, QIcon::Selected);
    return icon;
}

}

QIcon Icons::icon(const QString &name)
{
    static QHash<QString, QIcon> made;
    auto found = made.find(name);
    if (found == made.end())
        found = made.insert(name, inAllModes(name));
    return *found;
}

QIcon Icons::folder()
{
    static const QIcon made = [] {
        QIcon icon = inAllModes(QStringLiteral("folder"));
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected})
            icon.addFile(file(QStringLiteral("folder-open")), {}, mode, QIcon::On);
        return icon;
    }();
    return made;
}
