#pragma once

#include <QString>

#include <vector>

namespace dialect {

/// Names of tables, columns, functions and reserved words are the same in any case.
bool sameName(QStringView a, QStringView b);

/// What a column or an expression holds. A column of no known kind has bytes, such as pictures, which statements cannot
/// deal with: they are read, and added in bulk, as "\x" and hexadecimal digits.
enum class ValueKind { Unknown, Null, Text, Long, Number, Currency, YesNo, Date };

struct Column {
    QString name;
    ValueKind kind;
    bool indexed = false; ///< first in an index, so that rows are found by it quickly
};

struct ForeignKey {
    QString column, parentTable, parentColumn;
};

struct Table {
    QString name;
    std::vector<Column> columns;
    std::vector<ForeignKey> foreignKeys;
    QString rowNumber = {}; ///< the column, shown or not, by which one row is changed; empty where there is none
    QString counter = {}; ///< the column that the engine numbers by itself; empty where there is none

    /// Column called `name`, -1 where there is none.
    int find(QStringView name) const;
};

/// The tables that statements are translated against.
struct Schema {
    std::vector<Table> tables;

    /// Null where there is none.
    const Table *find(QStringView name) const;
    /// @throws EngineError 3078 where there is none.
    const Table &table(const QString &name) const;
    Table *find(QStringView name);
};

}
