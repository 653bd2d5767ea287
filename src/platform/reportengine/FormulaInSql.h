#pragma once

#include "platform/reportengine/Formula.h"

/// A condition of a statement that is true at least for the records that match, so that the database need not hand out
/// the others; empty where it could tell nothing. Which of them match is for Formula::matches() to say. Only after
/// Formula::bind().
QString inSql(const Formula &formula, const FieldList &fields);
