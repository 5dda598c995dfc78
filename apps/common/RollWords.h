#pragma once

// What a roll-forward did, in words.

#include <string>

#include "common/CommandError.h"
#include "MorvUt/enquiries/tracker/RollForward.h"
#include "MorvUt/taxyear/TaxYear.h"

namespace Morv
{

/// How a run ended that did not come to its end.
struct CutShort
{
    Tracker::RollEnd end;
    const char *name, *why;
    const char* wait; // for what the user waits before the next run; empty: for nothing
    Exit exit;
};
/// Null for a run that came to its end, or never began.
const CutShort* FindCutShort(Tracker::RollEnd end);

/// "Rolled forward into 2018/19, 14 clients: 14 sources, 140 tasks, 2 enquiries."
std::string RolledText(const Tracker::Rolled& rolled, bool isPreview, const TaxYear& year);
/// "14 clients are".
std::string LeftText(std::size_t left);

} // namespace Morv
