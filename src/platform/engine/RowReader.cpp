#include "platform/engine/RowReader.h"

#include "platform/engine/DatabasePrivate.h"

#include <sqlite3.h>

struct RowReader::Private {
    Database::Private database;
};

RowReader::RowReader(const Database &database, std::function<void()> pulse)
    : d(new Private{{database.path(), Connection::Mode::OpenExisting}})
{
    d->database.connection.execute(QStringLiteral("BEGIN"));
    d->database.connection.setPulse(std::move(pulse));
}

RowReader::~RowReader() = default;

void RowReader::read(const QString &statement, const std::function<void(const std::vector<Value> &)> &visit)
{
    const Database::Private::BoundStatement select = d->database.boundSelect(statement);
    sqlite3_stmt *const handle = select.prepared->handle.get();
    RowStore row(sqlite3_column_count(handle));
    std::vector<Value> values(sqlite3_column_count(handle));
    const auto visitRow = [&] {
        row.clear();
        row.append(handle);
        for (size_t column = 0; column < values.size(); ++column)
            values[column] = row.at(0, int(column));
        visit(values);
    };
    d->database.connection.read(handle, select.values, visitRow, &select.translation());
}
