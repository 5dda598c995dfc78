#pragma once

// Ids that the open transaction has taken and not given out yet.

#include <cstdint>

#include "Quarry/Table.h"

namespace Quarry::Detail
{

struct IdBlock
{
    long next = 0;
    long left = 0;
    std::uint64_t epoch = 0; // of the connection, when it was taken
};

/// Of the current connection.
IdBlock& BlockOf(const Table& table);

} // namespace Quarry::Detail
