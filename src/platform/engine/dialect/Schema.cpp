#include "platform/engine/dialect/Schema.h"

#include "platform/engine/EngineError.h"

#include <algorithm>

bool dialect::sameName(QStringView a, QStringView b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](QChar x, QChar y) { return x == y || x.toCaseFolded() == y.toCaseFolded(); });
}

int dialect::Table::find(QStringView wanted) const
{
    const auto found =
        std::ranges::find_if(columns, [&](const Column &column) { return sameName(column.name, wanted); });
    return found == columns.end() ? -1 : int(found - columns.begin());
}

const dialect::Table *dialect::Schema::find(QStringView wanted) const
{
    const auto found = std::ranges::find_if(tables, [&](const Table &table) { return sameName(table.name, wanted); });
    return found == tables.end() ? nullptr : &*found;
}

dialect::Table *dialect::Schema::find(QStringView wanted)
{
    return const_cast<Table *>(std::as_const(*this).find(wanted));
}

const dialect::Table &dialect::Schema::table(const QString &name) const
{
    const Table *found = find(name);
    if (!found)
        throw EngineError(EngineError::unknownTable,
                          QStringLiteral("The database engine cannot find the input table or query '%1'. Make sure it "
                                         "exists and that its name is spelled correctly.")
                              .arg(name));
    return *found;
}
