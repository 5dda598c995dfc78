#pragma once

// Whether the values of a statement fit its placeholders.

#include <vector>

#include "Cellar/Dialect.h"

namespace Cellar::Detail
{

/// Throws DatabaseError (Syntax), naming the place and never the value.
void CheckArguments(const PreparedText& prepared, const std::vector<Value>& values);

} // namespace Cellar::Detail
