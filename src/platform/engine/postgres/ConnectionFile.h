#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/// The text file that stands where a database file would, and says on which server the database
/// lies: the line "[postgresql]", then lines "keyword=value"; "#" begins a comment. All can read it.
namespace ConnectionFile {

struct Settings {
    /// Keywords and values for PQconnectdbParams(); files lie beside the connection file unless
    /// their path is absolute. For another machine "sslmode" is among them, by default "verify-full".
    std::vector<std::pair<QByteArray, QByteArray>> parameters;
    /// Of the database, where the crib's tables are; empty for the server's own choice.
    QByteArray schema;
};

/// Nothing for a file that does not begin with that line, or is not there.
/// @throws EngineError 3343 with its number for a line that does not belong there, above all for a
/// password.
std::optional<Settings> read(const QString &path);

}
