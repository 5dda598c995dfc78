#pragma once

// A client's records as JSON.

#include "MorvUt/context/ClientView.h"
#include "MorvUt/context/status/StatusView.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "Output.h"

namespace Morv
{

/// {"id", "partnership", "code", "name", "kind"}.
Json ToJson(const ClientView& client);

/// Its answers by their names, and "because": the reasons that a reader wants to be told.
Json ToJson(const ClientStatus& status);

/// The schedules of a return; empty lists without one.
Json ToJson(const HmrcApi::ReturnYear& own);

/// What is staged of HMRC's figures; rows that HMRC no longer sends carry "withdrawn": true.
Json ToJson(const HmrcApi::StagedYear& staged);

Json ToJson(const std::vector<CString>& texts);

} // namespace Morv
