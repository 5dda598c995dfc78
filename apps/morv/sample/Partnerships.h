#pragma once

// The sample's partnerships.

#include <vector>

#include "Returns.h"

namespace Morv::Sample
{

/// The two that every sample has, without partners.
void AddFirstPartnerships();
/// The partnership of this number, from 3 on, with partners, accounts and returns.
void AddPartnership(int number, const std::vector<Individual>& partners);
/// Who trades alone.
void AddSoleTrade(const Individual& owner);

} // namespace Morv::Sample
