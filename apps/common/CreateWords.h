#pragma once

// Which schedules were made, in words.

#include <string>

#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"

namespace Morv
{

/// "Created 2 employment schedules.", or why nothing was made in the real tax year. Throws Cellar::DatabaseError.
std::string CreatedText(ClientId client, short year, const HmrcApi::CreatedSchedules& created);

} // namespace Morv
