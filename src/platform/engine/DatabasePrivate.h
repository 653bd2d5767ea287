#pragma once

#include "platform/engine/Connection.h"
#include "platform/engine/dialect/Lexer.h"

#include <list>
#include <unordered_map>

/// A file's connection, its tables, and the statements that were translated for it.
struct Database::Private {
    /// A statement of some shape: translated, compiled and kept.
    struct Kept {
        QString shape;
        dialect::Translation translation;
        Connection::Prepared statement;
        std::vector<Value> values; ///< of its parameters, this time
    };

    explicit Private(const QString &path, bool create = false) : connection(path, create), schema(connection.schema())
    {
    }

    /// Translates `statement`, or finds it kept, with its literals for values.
    Kept &ready(const QString &statement);
    /// Forgets what was translated for the tables as they were.
    void reloadSchema();

    Connection connection;
    dialect::Schema schema;
    int readScopes = 0;
    Connection::Prepared readCursor;

private:
    bool fits(const Kept &kept, const std::vector<dialect::Literal> &literals) const;

    std::list<Kept> m_kept; ///< last used first
    std::unordered_map<QString, std::list<Kept>::iterator> m_byShape;
    Kept m_passing; ///< one that is too long to be kept
};
