#pragma once

// Ids for new rows.

#include "Quarry/Export.h"
#include "Quarry/Table.h"

namespace Quarry
{

/// A new id of the table, above its counter and its largest id. Outside a transaction the counter moves by one, in a
/// transaction of its own; within one by a block, whose ids are given out until a level is rolled back or the outermost
/// one ends: what is left of it then is forgotten. Throws Cellar::DatabaseError (Other) when 2147483647 has been given
/// out, and std::logic_error for a table whose key is no single number and aside from open transactions.
QUARRY_API long NewId(const Table& table);

} // namespace Quarry
