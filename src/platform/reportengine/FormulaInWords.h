#pragma once

#include "platform/reportengine/Formula.h"

/// What a formula asks for, for people: "Employee is 1009 and Date Out from 2026-01-01 to 2026-02-01". Columns of
/// tables other than `table`, the report's own, are called with their table. Only after Formula::bind().
QString inWords(const Formula &formula, const FieldList &fields, const QString &table);
