#pragma once

// The library's rules that make sense at a prompt: those on dates, tax years, money and identifiers.

#include <span>
#include <string_view>

#include "CalcArguments.h"
#include "Output.h"

namespace Morv
{

struct CalcRule
{
    std::string_view name;      // the function's own
    std::string_view arguments; // see DeclaredArguments
    std::string_view result;    // its unit
    Json (*apply)(const Values&);
};

/// In the order of their subjects.
std::span<const CalcRule> CalcRules();

} // namespace Morv
