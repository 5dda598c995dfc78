#include "Scenarios.h"

namespace Sandbox
{

namespace
{

constexpr struct
{
    std::string_view file; // without .json
    const char* body;
} kExamples[] = {
#include "HmrcExamples.inc"
};

/// The scenario's name when the file is one of the group's, else empty.
std::string_view NameIn(std::string_view group, std::string_view file)
{
    const bool isInGroup =
        file.size() > group.size() && file.substr(0, group.size()) == group && file[group.size()] == '-';
    return isInGroup ? file.substr(group.size() + 1) : std::string_view();
}

} // namespace

std::vector<std::string> ScenarioNames(std::string_view group)
{
    std::vector<std::string> names;
    for (const auto& example : kExamples)
        if (const std::string_view name = NameIn(group, example.file); !name.empty())
            names.emplace_back(name);
    return names;
}

const char* FindScenario(std::string_view group, std::string_view name)
{
    for (const auto& example : kExamples)
        if (!name.empty() && NameIn(group, example.file) == name)
            return example.body;
    return nullptr;
}

} // namespace Sandbox
