#pragma once

// What a fetch did, in words.

#include <string>
#include <vector>

#include "MorvUt/hmrc/fetch/FetchData.h"

namespace Morv
{

/// Where a program leads its user from there.
struct FetchWays
{
    CString remedy;          // of what stopped the fetch; empty: none
    const char* differences; // what shows them: "morv hmrc differences lists them."
};

/// What came of it, in one paragraph.
std::string FetchedText(const HmrcApi::FetchResult& result, const FetchWays& ways);
/// A line for each error: its group, HMRC's message and code, what the user can do.
std::vector<std::string> ErrorLines(const HmrcApi::CAPIErrorHandler& errors);

} // namespace Morv
