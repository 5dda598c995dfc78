#pragma once

// Why a command that works through many clients stops before the last.

#include "common/CommandError.h"
#include "MorvUt/hmrc/fetch/Absence.h"

namespace Morv
{

struct GivenUp
{
    HmrcApi::Absence absence;
    const char* why;
    const char* remedy; // what is to be done before the command is given again; empty: nothing
    Exit exit;
};

/// Null for None: nothing was given up.
const GivenUp* FindGivenUp(HmrcApi::Absence absence);

/// One line on standard error. `left`: the clients that were not come to, `what` of them, as "not asked about"; `next`:
/// what the same command does then.
void TellGivenUp(const GivenUp& given, int left, const char* what, const char* next);

} // namespace Morv
