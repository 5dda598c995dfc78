#pragma once

// Whether the values of a statement fit its placeholders.

#include <span>

#include "Cellar/Dialect.h"

namespace Cellar::Detail
{

/// Throws DatabaseError (Syntax), naming the place and never the value.
void CheckArguments(const PreparedText& prepared, std::span<const Value> values);

} // namespace Cellar::Detail
