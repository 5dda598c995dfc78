#pragma once

// HMRC's published test data.

#include <string>
#include <string_view>
#include <vector>

namespace Sandbox
{

// The figures of HMRC's own published sandbox scenarios, for the tax year 2017-18, served as they stand. Each is a file
// components/HmrcApi/interfaces/examples/GROUP-NAME.json; a test primes it by its name.

/// The scenarios of a group, by name.
std::vector<std::string> ScenarioNames(std::string_view group);

/// The body of the answer; null when the group has no such scenario.
const char* FindScenario(std::string_view group, std::string_view name);

} // namespace Sandbox
