#pragma once

#include "platform/engine/DatabasePrivate.h"
#include "platform/engine/Recordset.h"

/// The rows, read when they are first asked for where they can be added to.
struct Recordset::Private {
    enum Mode { Reading, Adding, Editing };

    Database::Private *database = nullptr;
    QString statement;
    QString table; ///< whose rows can be changed; empty where they cannot
    std::vector<dialect::OutputColumn> columns;
    std::optional<RowStore> rows; ///< behind the columns the row's number, where rows can be changed
    int current = 0;
    Mode mode = Reading;
    std::vector<std::optional<Value>> changes;

    const RowStore &read();
    int count() { return read().rowCount(); }
    void requireCurrent();
    void requireChangeable() const;
    void begin(Mode mode);
    void moveTo(int row);
    /// Stores the changes by `sql`, which gives back the row as it stands then.
    RowStore store(const dialect::Translation &translation, const std::vector<Value> &values);
};
