#pragma once

#include <span>
#include <string>
#include <string_view>

namespace Sandbox
{

/// A documented set of example figures: the name by which a test primes it, and the body of the answer.
struct Scenario
{
    const char* name;
    const char* body;
};

/// Individual PAYE; the first is the default.
std::span<const Scenario> PayeScenarios();

/// National Insurance; the first is the default.
std::span<const Scenario> NationalInsuranceScenarios();

/// The scenario of that name, null when there is none.
const Scenario* FindScenario(std::span<const Scenario> scenarios, std::string_view name);

} // namespace Sandbox
