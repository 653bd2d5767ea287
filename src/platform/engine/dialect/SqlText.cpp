#include "platform/engine/dialect/SqlText.h"

QString dialect::quotedName(QString name) { return u'"' + name.replace(u'"', QLatin1String("\"\"")) + u'"'; }

QString dialect::quotedNames(const QStringList &names)
{
    QStringList quoted;
    for (const QString &name : names)
        quoted.append(quotedName(name));
    return quoted.join(QLatin1String(", "));
}

QString dialect::quotedText(QString text) { return u'\'' + text.replace(u'\'', QLatin1String("''")) + u'\''; }
