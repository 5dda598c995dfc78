#pragma once

// HMRC's figures put in the place of a schedule's.

#include "MorvUt/hmrc/review/Differences.h"

namespace HmrcApi
{

/// Writes HMRC's side of each compared row into the schedule, and nothing else of it. Of several benefits of one code,
/// or of one box where HMRC gave the sum of it, the first gets HMRC's figure and the others go. Needs a transaction
/// that was begun with the intent to write before the difference was found. False when there is nothing that can be
/// replaced: no schedule is HMRC's item, or the sum is larger than an amount can be.
bool ReplaceFigures(const Difference& difference);

} // namespace HmrcApi
