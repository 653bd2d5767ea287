#pragma once

#include <QString>

/// Where vorlane-start finds the crib folder, and whether the program can work in it. A fault is one sentence for the
/// user, empty for none.
namespace CribFolder {

/// The database, or the connection file in its place.
QString database(const QString &folder);

struct Found {
    QString folder = {};
    QString fault = {};
};

/// The file that names the folder for all users of a computer.
QString configuration();
/// The folder that a configuration file of one line names; blank lines and those that begin with "#" do not count.
/// Neither folder nor fault where there is no such file.
Found namedIn(const QString &configuration);

/// Why the program cannot open the crib in that folder. It is opened for that, so a server has to answer.
QString fault(const QString &folder);

/// Whether the crib can be looked at only. On a server the user's rights there decide, and this is false.
bool isReadOnly(const QString &folder);

}
