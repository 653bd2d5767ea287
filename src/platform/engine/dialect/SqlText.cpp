#include "platform/engine/dialect/SqlText.h"

QString dialect::quotedName(QString name) { return u'"' + name.replace(u'"', QLatin1String("\"\"")) + u'"'; }

QString dialect::quotedText(QString text) { return u'\'' + text.replace(u'\'', QLatin1String("''")) + u'\''; }
