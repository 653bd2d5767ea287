#include "platform/gui/Icons.h"

#include <QHash>

namespace {

QString file(const QString &name) { return QStringLiteral(":/icons/%1.svg").arg(name); }

}

QIcon Icons::icon(const QString &name)
{
    static QHash<QString, QIcon> made;
    auto found = made.find(name);
    if (found == made.end())
        found = made.insert(name, QIcon(file(name)));
    return *found;
}

QIcon Icons::folder()
{
    static const QIcon made = [] {
        QIcon icon(file(QStringLiteral("folder")));
        icon.addFile(file(QStringLiteral("folder-open")), {}, QIcon::Normal, QIcon::On);
        return icon;
    }();
    return made;
}
