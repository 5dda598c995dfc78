#pragma once

// The bodies of the server's own switches.

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace Sandbox
{

/// The object in a control request's body, an empty body being an empty object. Throws ControlError when it is
/// something else, or has a member that is not one of `members`.
nlohmann::json ParseControlBody(const std::string& body, std::initializer_list<const char*> members);

/// Throws ControlError when `body` is no object or has a member that is not one of `members`.
void CheckMembers(const nlohmann::json& body, std::initializer_list<const char*> members);

/// A member's value, nothing when it is absent. Throws ControlError when it has another type or is out of range.
std::optional<std::string> TextMember(const nlohmann::json& body, const char* name);
std::optional<bool> BoolMember(const nlohmann::json& body, const char* name);
std::optional<int> IntMember(const nlohmann::json& body, const char* name, int least, int most);

} // namespace Sandbox
