#pragma once

#include <QStringList>

namespace dialect {

/// A name in the engine's own quotes, whatever it holds.
QString quotedName(QString name);
QString quotedNames(const QStringList &names);
/// A text literal of the engine's own language.
QString quotedText(QString text);

}
