#pragma once

// Settings in an INI file.

#include <optional>
#include <string>
#include <string_view>

#include "Afx/text/CString.h"

namespace Afx::Detail
{

std::optional<CString> ReadSettingsFile(const std::string& path, std::string_view section, std::string_view name);
/// Why nothing of the file is taken, "has more than 4 MiB"; empty when it is, and when there is none.
std::string SettingsFileProblem(const std::string& path);
/// Writes the whole file anew and puts it in place by rename; nothing as `value` removes the entry. False, and the file
/// is as it was, when it cannot be read or written.
bool WriteSettingsFile(const std::string& path, std::string_view section, std::string_view name,
                       std::optional<std::string_view> value);

} // namespace Afx::Detail
