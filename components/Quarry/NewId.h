#pragma once

// Ids for new rows.

#include "Cellar/Connection.h"
#include "Quarry/Export.h"
#include "Quarry/Table.h"

namespace Quarry
{

/// A new id of the table, above its counter and its largest id. Outside a transaction the counter moves by one, in a
/// transaction of its own; within one by a block, whose ids are given out until a level is rolled back or the outermost
/// one ends: what is left of it then is forgotten. On a server a sequence counts blocks, each one connection's for as
/// long as it is open, whatever becomes of transactions; a connection that has used up its blocks takes as many again
/// at once, at most eight. Rows that other programs put there without an id get one of it too. Throws
/// Cellar::DatabaseError (Other) when 2147483647 has been given out, fewer are left than it takes at once, or the
/// sequence gives no number, and std::logic_error for a table whose key is no single number and aside from open
/// transactions.
QUARRY_API long NewId(const Table& table);
/// On this connection.
QUARRY_API long NewId(const Table& table, Cellar::CConnection& connection);
/// The next `count` ids that the open transaction is given come from one block (on a server from blocks that are
/// fetched at once), which is taken now if need be. Throws
/// as NewId, and std::logic_error outside a transaction.
QUARRY_API void ReserveIds(const Table& table, long count, Cellar::CConnection& connection);

/// The largest id that NewId has given, or may have; 0: none.
QUARRY_API long LastId(const Table& table, Cellar::CConnection& connection);
/// From now on NewId gives ids above `last`, for a practice that goes on where another ended. Within a transaction.
QUARRY_API void SkipIds(const Table& table, long last, Cellar::CConnection& connection);

} // namespace Quarry
