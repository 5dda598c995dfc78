#pragma once

// The text of a settings file: found in it, changed in it, everything else kept as it stands.

#include <optional>
#include <string>
#include <string_view>

namespace Afx::Detail
{

/// Whether a section, or a name, can stand in a settings file: not empty, no blanks at its ends, no line ends, and none
/// of the characters that would make the line something else.
bool IsIniSection(std::string_view section) noexcept;
bool IsIniName(std::string_view name) noexcept;

/// The first value of that name in a section of that name; names ignore case. Lines that are none are skipped.
std::optional<std::string> FindIniValue(std::string_view text, std::string_view section, std::string_view name);

/// `text` with the value replaced, or added to its section, or removed when `value` is nothing, with its section
/// when that holds nothing else. Comments, order and lines that are none stay. Section and name must be ones that can
/// stand.
std::string SetIniValue(std::string_view text, std::string_view section, std::string_view name,
                        std::optional<std::string_view> value);

} // namespace Afx::Detail
