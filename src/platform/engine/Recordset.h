#pragma once

#include "platform/engine/driver/Value.h"

#include <QStringList>

#include <memory>

/// The rows of one SELECT, read whole when it was opened, with a current row that moves through
/// them. The engine holds no lock for it. Over one whole table its rows can be added to, changed
/// and deleted, by row id, so that a table without a key of its own works too.
///
/// A field name that the rows do not have ends in EngineError::noSuchField; a move or a field
/// without a current row in error 3021 "No current record."; a change of
/// rows that cannot be changed in error 3027, one without addNew() or edit() in error 3020.
class Recordset
{
public:
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;
    ~Recordset();

    bool isEmpty() const { return recordCount() == 0; }
    int recordCount() const;
    /// Whether movePrevious() has left the first row behind, or there are no rows.
    bool atBeginning() const;
    /// Whether moveNext() has left the last row behind, or there are no rows.
    bool atEnd() const;
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    /// Row number of the current row, from 0.
    int position() const;
    void setPosition(int row);

    int fieldCount() const;
    QString fieldName(int column) const;
    /// Column of the field called `name`, in any case.
    int fieldIndex(QStringView name) const;
    Value field(int column) const;
    Value field(QStringView name) const;
    /// The field's text; empty where the field is.
    QString text(QStringView name) const { return field(name).toText(); }
    /// Any row's value without moving there; what grids and combo boxes draw from.
    Value at(int row, int column) const;

    /// Makes the first row current that meets `criteria`, a condition as it would stand behind
    /// WHERE over the fields of this recordset. @returns whether there is one; otherwise the current row stays.
    bool findFirst(const QString &criteria);

    /// Starts a new row; update() stores it. Adding never reads the table.
    void addNew();
    /// Starts a change of the current row; update() stores it.
    void edit();
    /// Converts `value` to what the column holds. @throws EngineError 3464 or 3349 where it does not fit.
    void setField(QStringView name, const Value &value);
    /// Stores the row; fields that were not set keep their value. @throws EngineError 3167 when somebody else deleted
    /// it, 3022, 3201 or 3314 where the table does not take it.
    void update();
    void cancelUpdate();
    /// Deletes the current row; the next one is current then. @throws EngineError 3200 while other rows refer to it,
    /// 3167 when somebody else deleted it.
    void remove();

private:
    friend class Database;
    friend class SelectByNumber;
    struct Private;
    explicit Recordset(std::unique_ptr<Private> d);
    std::unique_ptr<Private> d;
};
