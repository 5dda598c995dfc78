#pragma once

// What a transaction that means to write names as its subject.

#include "Brix/Records.h"
#include "Cellar/Connection.h"
#include "Quarry/Keys.h"

namespace Brix
{

/// All records of one client, or partnership. Within such a transaction an inner one names the same, or none is begun
/// with the intent to write: a second lock may have to wait for somebody who waits for the first.
inline Cellar::Subject SubjectOf(const ClientId& client) noexcept { return {CClient::kTableNumber, client.Get()}; }
inline Cellar::Subject SubjectOf(const PartnershipId& partnership) noexcept
{
    return {CPartnership::kTableNumber, partnership.Get()};
}

/// The gateways and their tokens, whose table has no number.
inline constexpr Cellar::Subject kAuthorisations{0xFFFF, 0};

} // namespace Brix
