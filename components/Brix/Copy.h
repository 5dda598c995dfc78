#pragma once

// A practice from one database into another.

#include <cstdint>
#include <functional>
#include <span>

#include "Brix/Export.h"
#include "Cellar/Connection.h"

namespace Brix
{

/// One end of a copy: the database, and the key (32 bytes) under which the practice keeps its secrets there.
struct CopySide
{
    Cellar::CConnection& practice;
    std::span<const std::uint8_t> key;
};

struct Copied
{
    std::int64_t rows = 0; // copied, read again from both sides and found equal
    int tables = 0;        // that hold rows
    int resealed = 0;      // secrets that are under the other key now
    int unopened = 0;      // secrets that the first key does not open: copied as they are
};

/// Told of every few hundred rows: `done` of `all`, each row counts twice (copied, compared). False gives up.
using CopyProgress = std::function<bool(std::int64_t done, std::int64_t all)>;

/// Copies every row of a practice, as it is at one moment, into a database that holds no practice, whichever engine
/// keeps either; makes the schema there, and goes on from the ids given out. What belongs to sessions is left: locks of
/// users, features and tokens. Then every row is read again on both sides and compared, secrets by what they open to.
/// All of it is one transaction: when it throws, or is cut short, there is no practice in `to`.
///
/// Memory does not grow with the practice. Throws Cellar::DatabaseError: what either database refuses, with table and
/// row; (Other) when `from` is no practice of this version, `to` holds one already, a row differs afterwards, or the
/// progress said to give up.
BRIX_API Copied CopyPractice(const CopySide& from, const CopySide& to, const CopyProgress& progress);

} // namespace Brix
