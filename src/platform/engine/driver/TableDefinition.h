#pragma once

#include "platform/engine/dialect/Schema.h"

#include <QStringList>

/// A table to be made, in words that every engine has its own for.
struct TableDefinition {
    enum Rule {
        Optional,
        Required, ///< never empty
        Zero, ///< never empty, and 0 where nothing is given
        Key, ///< never empty, and never twice
        Counter, ///< a key that the engine numbers by itself, never with the same number again
    };
    struct Column {
        QString name;
        dialect::ValueKind kind = dialect::ValueKind::Text;
        Rule rule = Optional;
    };

    QString name;
    std::vector<Column> columns;
    std::vector<dialect::ForeignKey> foreignKeys = {};
    std::vector<QStringList> indexes = {}; ///< the columns of each
    qint64 firstNumber = 1; ///< that the counter gives
    /// What only an engine keeps that serves several desks at once; with a file, which one writes to at a time, looking
    /// first is enough. A column that no two rows share, where the yes/no column `where` is set or none is named, or on
    /// one day where the date column `day` is named.
    struct Unique {
        QString column;
        QString where = {};
        QString day = {};
    };
    std::vector<Unique> uniques = {};
    QString parent = {}; ///< the column that names another row of the same table, 0 for none; likewise
};
