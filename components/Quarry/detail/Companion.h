#pragma once

// What Quarry keeps with a connection.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Cellar/Connection.h"
#include "Quarry/Table.h"

namespace Quarry::Detail
{

/// Ids that were taken and not given out yet: those of the open transaction where a row counts them, of the connection
/// where a sequence does.
struct IdBlock
{
    long next = 0;
    long left = 0;
    std::uint64_t epoch = 0;   // of the connection, when it was taken
    std::vector<long> further; // first ids of blocks of a sequence, the next one last
    long taken = 0;            // such blocks by now
};

struct Companion
{
    std::map<const Table*, IdBlock> idBlocks;
    std::string database; // as SetDatabase named it; empty: it was not
};
Companion& CompanionOf(Cellar::CConnection& connection);

/// The name under which listeners know a table of the connection; null when nobody is told of it.
const char* DatabaseOf(Cellar::CConnection& connection, const Table& table);

} // namespace Quarry::Detail
