#pragma once

#include "Http.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Sandbox
{

/// The pieces between `separator`, empty ones included: "/a//b" split at '/' is "", "a", "", "b".
std::vector<std::string_view> Split(std::string_view text, char separator);

/// `text` for a query value: everything but unreserved characters percent-encoded.
std::string PercentEncode(std::string_view text);

/// `text` for an HTML page.
std::string HtmlEscape(std::string_view text);

/// The first parameter of that name, nothing when it is absent or empty.
std::optional<std::string> Find(const Parameters& parameters, const std::string& name);

} // namespace Sandbox
