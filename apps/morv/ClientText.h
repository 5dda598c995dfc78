#pragma once

// A client's records as text for people.

#include "MorvUt/context/ClientView.h"
#include "MorvUt/context/status/StatusView.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace Morv
{

void PrintClient(const ClientView& client, short year);
void PrintStatus(const ClientStatus& status);
void PrintSchedules(const HmrcApi::ReturnYear& own);
void PrintStaged(const HmrcApi::StagedYear& staged, short year);

} // namespace Morv
