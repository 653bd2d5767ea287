#pragma once

#include "platform/engine/Database.h"
#include "platform/engine/StatementCache.h"

/// The driver of an open database, its tables, and the statements that were translated for them.
struct Database::Private {
    /// A statement with the values of its literals.
    struct BoundStatement {
        std::shared_ptr<const PreparedStatement> prepared;
        std::vector<Value> values;

        const dialect::Translation &translation() const { return prepared->translation; }
    };

    Private(const QString &path, std::unique_ptr<Driver> opened)
        : path(path), driver(std::move(opened)), schema(driver->schema())
    {
    }

    /// Translates `statement`, or takes a kept one of its shape.
    BoundStatement bound(const QString &statement);
    /// The same for a SELECT; any other statement is refused.
    BoundStatement boundSelect(const QString &statement);
    std::shared_ptr<const PreparedStatement> prepared(dialect::Translation translation);
    /// Runs to the end. @returns the number of rows that it changed.
    qint64 run(const BoundStatement &statement, RowStore *rows = nullptr);
    /// Reads the tables anew, and forgets what was translated for them as they were.
    void reloadSchema();

    /// The way to the driver. There is none while the driver calls the pulse: what a window does then must not come
    /// between the steps of a statement.
    class Access
    {
    public:
        explicit Access(std::unique_ptr<Driver> driver) : m_driver(std::move(driver)) { }
        Driver *operator->() const
        {
            if (isBeating)
                throw EngineError(EngineError::lockedFile, QStringLiteral("The database is busy with a change."));
            return m_driver.get();
        }
        bool isBeating = false;

    private:
        std::unique_ptr<Driver> m_driver;
    };

    QString path; ///< as it was given to openDatabase()
    Access driver;
    Pulse *pulse = nullptr;
    dialect::Schema schema;
    StatementCache cache;
    int readScopes = 0;
};

/// An engine that keeps nothing, for conditions over values that are here already.
Driver &scratchDriver();
