#include "db/Literals.h"

#include "platform/text/Format.h"

QString quoted(const QString &text) { return '\'' + QString(text).replace('\'', "''") + '\''; }

QString joined(const QList<qint32> &numbers)
{
    QStringList texts;
    for (const qint32 number : numbers)
        texts.append(QString::number(number));
    return texts.join(',');
}

QString dateLiteral(const QDateTime &when) { return '#' + Format::generalDate(when) + '#'; }
