#pragma once

// The kinds of work that every practice's work tracker knows. These write to the current connection and throw
// Cellar::DatabaseError.

#include "MorvUt/Export.h"

// Types of sources, as they are stored.
inline constexpr int kTaxReturnSource = 1;
inline constexpr int kOtherSource = 2;
inline constexpr int kPartnershipReturnSource = 3;

/// Adds what a practice lacks of the task types, of the source types of the two tax returns and of their default tasks:
/// the task types up to 20, without dates. A source type that is there keeps its own default tasks. Call it for a new
/// practice, and for one that was upgraded, in the same transaction.
MORVUT_API void SeedTrackerTypes();
/// Adds a source type, unless it is there.
MORVUT_API void AddSourceType(int type);
