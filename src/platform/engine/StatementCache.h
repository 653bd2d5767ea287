#pragma once

#include "platform/engine/driver/Driver.h"

#include <list>
#include <unordered_map>

/// A statement that was translated and compiled.
struct PreparedStatement {
    dialect::Translation translation;
    Driver::Prepared handle;
    int columnCount = 0; ///< of the rows that it gives, the row's number included
};

/// Keeps prepared statements by their shape; those that were not used for longest go first.
class StatementCache
{
public:
    /// Null where none of this shape is kept.
    std::shared_ptr<const PreparedStatement> find(const QString &shape);
    void insert(const QString &shape, std::shared_ptr<const PreparedStatement> statement);
    void clear();

private:
    struct Entry {
        QString shape;
        std::shared_ptr<const PreparedStatement> statement;
    };
    std::list<Entry> m_entries; ///< last used first
    std::unordered_map<QString, std::list<Entry>::iterator> m_byShape;
};
