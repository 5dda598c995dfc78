#pragma once

// Paths in UTF-8, as the rest of the system holds them, for the file system.

#include <filesystem>
#include <string>
#include <string_view>

namespace Afx
{

/// The path that a text in UTF-8 names, and back.
inline std::filesystem::path ToPath(std::string_view utf8)
{
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string FromPath(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

} // namespace Afx
