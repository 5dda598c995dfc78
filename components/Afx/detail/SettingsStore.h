#pragma once

// The two stores of settings: an INI file, and the registry.

#include <optional>
#include <string>
#include <string_view>

#include "Afx/CString.h"

namespace Afx::Detail
{

std::optional<CString> ReadSettingsFile(const std::string& path, std::string_view section, std::string_view name);
/// Writes the whole file anew and puts it in place by rename; nothing as `value` removes the entry. False, and the file
/// is as it was, when it cannot be read or written.
bool WriteSettingsFile(const std::string& path, std::string_view section, std::string_view name,
                       std::optional<std::string_view> value);

#ifdef _WIN32
std::optional<CString> ReadRegistry(std::string_view section, std::string_view name);
bool WriteRegistry(std::string_view section, std::string_view name, std::optional<std::string_view> value);
#endif

} // namespace Afx::Detail
