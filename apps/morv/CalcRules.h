#pragma once

// The library's rules that make sense at a prompt: those on dates, tax years, money and identifiers.

#include <span>
#include <string_view>
#include <vector>

#include "CalcFunction.h"

namespace Morv
{

/// A function of the library that can be called at the prompt.
struct CalcRule
{
    std::string_view name;      // the function's own
    std::string_view arguments; // their names, between blanks; with a ? behind the name it may be left out
    std::string_view result;    // its unit
    CalcFunction function;
};

/// What the rule takes.
std::vector<Argument> DeclaredArguments(const CalcRule& rule);

/// In the order of their subjects.
std::span<const CalcRule> CalcRules();

} // namespace Morv
