#pragma once

// Small operations on text.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Http.h"

namespace Sandbox
{

/// The pieces between `separator`, empty ones included: "/a//b" split at '/' is "", "a", "", "b".
std::vector<std::string_view> Split(std::string_view text, char separator);

/// Whether `path` is `start` or lies below it, by whole segments: "/a/b" lies below "/a" and "/a/", "/ab" does not.
bool IsBelow(std::string_view path, std::string_view start);

/// `text` for a query value: everything but unreserved characters percent-encoded.
std::string PercentEncode(std::string_view text);

/// `text` for an HTML page.
std::string HtmlEscape(std::string_view text);

/// The first parameter of that name, nothing when it is absent or empty.
std::optional<std::string> Find(const Parameters& parameters, const std::string& name);

} // namespace Sandbox
