#pragma once

#include <QIcon>

/// The program's own pictures, from data/icons.
namespace Icons {

/// The picture called `name`: "tool-in", "find" and so on.
QIcon icon(const QString &name);
/// The picture of tree and list folders; its state "on" is the open folder.
QIcon folder();

}
