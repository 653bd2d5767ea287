#pragma once

#include "platform/engine/driver/Value.h"
#include "platform/reportengine/FieldList.h"

#include <optional>

/// How a template prints a value: {Table.Column:short date}.
struct FieldFormat {
    enum Kind { Plain, ShortDate, GeneralDate, Month, Year, Currency, Decimals, YesNo, Upper };
    Kind kind = Plain;
    int decimals = 0;

    /// The format of that name; nothing for an unknown one.
    static std::optional<FieldFormat> fromName(QStringView name);
    /// Whether values of that kind can be printed so.
    bool suits(FieldKind fieldKind) const;
    /// Empty for an empty value.
    QString apply(const Value &value) const;
};
