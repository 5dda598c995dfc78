#pragma once

// All rows of a result.

#include <string>
#include <vector>

#include "Cellar/Value.h"

namespace Cellar
{

/// All rows of a result, read at once.
struct RowSet
{
    std::vector<std::string> columns; // as the database names them
    std::vector<std::vector<Value>> rows;
};

} // namespace Cellar
