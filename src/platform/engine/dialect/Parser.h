#pragma once

#include "platform/engine/dialect/Statement.h"

namespace dialect {

/// One whole statement. Anything behind it but a ";" is refused, so that no text typed into a form
/// can bring a second one in.
/// @throws EngineError for a statement that does not follow the dialect.
Statement parse(QStringView statement);

/// A condition as it stands behind WHERE, with nothing behind it. @throws EngineError likewise.
ExpressionPtr parseCondition(QStringView condition);

}
