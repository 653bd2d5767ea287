#include "db/Literals.h"

#include "platform/text/Format.h"

QString quoted(const QString &text) { return '\'' + QString(text).replace('\'', "''") + '\''; }

QString dateLiteral(const QDateTime &when) { return '#' + Format::generalDate(when) + '#'; }
