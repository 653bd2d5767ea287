#pragma once

#include "platform/engine/DatabasePrivate.h"
#include "platform/engine/Recordset.h"

struct Recordset::Private {
    enum Mode { Reading, Adding, Editing };

    /// `known` are the rows, where they were read already.
    Private(Database::Private &database, Database::Private::BoundStatement statement,
            std::optional<RowStore> known = std::nullopt);

    const std::vector<dialect::OutputColumn> &columns() const { return source.translation().columns; }
    /// Whose rows can be changed; empty where they cannot.
    const QString &table() const { return source.translation().table; }
    const RowStore &rows();
    int count() { return rows().rowCount(); }
    void requireCurrent();
    void requireChangeable() const;
    void requireMode() const;
    void begin(Mode mode);
    void moveTo(int row);
    /// Number of the current row, by which it is changed.
    Value rowNumber() const;

    /// A statement that changes one row of the table.
    struct Change {
        dialect::Translation translation;
        std::vector<Value> values;
    };
    Change pendingChange() const;
    /// How a statement calls its parameter of that number.
    QString placeholder(size_t number, dialect::ValueKind kind) const;
    /// The condition for one row, whose number is the parameter of that number.
    QString whereRow(size_t number) const;
    /// @returns the row as it stands then, where the change gives it.
    RowStore run(const Change &change);

    Database::Private &database;
    Database::Private::BoundStatement source;
    std::optional<RowStore> read; ///< behind the columns the row's number, where rows can be changed
    int current = 0;
    Mode mode = Reading;
    std::vector<std::optional<Value>> changes; ///< by column
};
