#pragma once

// A practice to try things out on.

namespace Morv
{

inline constexpr int kSampleClients = 12;

/// Fills an empty practice: `clients` clients (12 of every kind first, then more individuals), two partnerships, users
/// with all rights, without the HMRC rights, and with a role; HMRC retrieval on, by the PAYE interface.
void FillSamplePractice(int clients);

/// What every new practice holds: the options record, HMRC retrieval off.
void FillNewPractice();

} // namespace Morv
