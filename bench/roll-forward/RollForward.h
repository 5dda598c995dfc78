#pragma once

// The practices that are rolled forward, and the peer.

#include <string>

#include "Cellar/Connection.h"

inline constexpr short kNewYear = 2025;

/// Fills an empty practice: each client has last year's tax return with ten tasks, every fifth a job with three of its
/// own besides, every third an enquiry that is linked to the return.
void FillPractice(Cellar::CConnection& connection, int clients);

/// Everybody's rows of the new year by one hand-written set of INSERT ... SELECT, in one transaction. It knows these
/// clients and no others: nobody has left, nothing is there yet, no dates of 29 February.
void RollForwardRaw(Cellar::CConnection& connection);

/// What of the new year is there: counts and sums of everything but ids.
std::string SummaryOf(Cellar::CConnection& connection);
