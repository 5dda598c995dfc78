#pragma once

// Settings in the registry, under HKEY_CURRENT_USER. On Windows only.

#include <optional>
#include <string_view>

#include "Afx/text/CString.h"

namespace Afx::Detail
{

std::optional<CString> ReadRegistry(std::string_view section, std::string_view name);
/// Nothing as `value` removes the entry. False when the registry refuses.
bool WriteRegistry(std::string_view section, std::string_view name, std::optional<std::string_view> value);

} // namespace Afx::Detail
