#pragma once

// Finding a result's columns.

#include <string>
#include <string_view>
#include <vector>

#include "Cellar/Value.h"

namespace Cellar::Detail
{

/// By name without regard to case. Throws DatabaseError (Other) when there is none.
int PositionOf(const std::vector<std::string>& columns, std::string_view name);
/// Throws DatabaseError (Other) when there is no such position.
const Value& At(const std::vector<Value>& row, int position);
[[noreturn]] void FailNoRow();

} // namespace Cellar::Detail
