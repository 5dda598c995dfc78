#pragma once

// A client's records as the command line shows them.

#include "Brix/Records.h"
#include "Output.h"

namespace Morv
{

/// {"id", "partnership", "code", "name", "kind"} of the current row.
Json ViewOf(const Brix::CClient& client);
Json ViewOf(const Brix::CPartnership& partnership);

/// The schedules of the client's return of the real tax year; empty lists without a return.
Json SchedulesOf(long clientId, short year);

/// What HMRC's figures are staged for the real tax year; rows that HMRC no longer sends carry "withdrawn": true.
Json StagedOf(long clientId, short year);

} // namespace Morv
