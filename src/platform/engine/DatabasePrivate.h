#pragma once

#include "platform/engine/StatementCache.h"

/// A file's connection, its tables, and the statements that were translated for them.
struct Database::Private {
    /// A statement with the values of its literals.
    struct BoundStatement {
        std::shared_ptr<const PreparedStatement> prepared;
        std::vector<Value> values;

        const dialect::Translation &translation() const { return prepared->translation; }
    };

    Private(const QString &path, Connection::Mode mode) : connection(path, mode), schema(connection.schema()) { }

    /// Translates `statement`, or takes a kept one of its shape.
    BoundStatement bound(const QString &statement);
    /// The same for a SELECT; any other statement is refused.
    BoundStatement boundSelect(const QString &statement);
    /// Runs to the end. @returns the number of rows that it changed.
    qint64 run(const BoundStatement &statement, RowStore *rows = nullptr);
    /// Reads the tables anew, and forgets what was translated for them as they were.
    void reloadSchema();

    Connection connection;
    dialect::Schema schema;
    StatementCache cache;
    int readScopes = 0;
    Connection::Prepared readCursor; ///< while there are read scopes
};
