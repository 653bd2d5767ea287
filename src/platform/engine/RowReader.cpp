#include "platform/engine/RowReader.h"

#include "platform/engine/DatabasePrivate.h"
#include "platform/engine/Workspace.h"

struct RowReader::Private {
    std::unique_ptr<Database> database;
    ReadScope scope{*database};
};

RowReader::RowReader(const Database &database, std::function<void()> pulse)
    : d(new Private{Workspace::first().openDatabase(database.path())})
{
    d->database->d->driver->setPulse(std::move(pulse));
}

RowReader::~RowReader() = default;

void RowReader::read(const QString &statement, const std::function<void(const std::vector<Value> &)> &visit)
{
    Database::Private &data = *d->database->d;
    const Database::Private::BoundStatement select = data.boundSelect(statement);
    std::vector<Value> values(select.prepared->columnCount);
    const auto visitRow = [&](const RowStore &row) {
        for (size_t column = 0; column < values.size(); ++column)
            values[column] = row.at(0, int(column));
        visit(values);
    };
    data.driver->read(*select.prepared->handle, select.values, int(values.size()), visitRow, &select.translation());
}
