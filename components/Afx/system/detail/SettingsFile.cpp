#include "Afx/system/detail/SettingsFile.h"

#include <filesystem>
#include <fstream>

#include "Afx/system/detail/IniText.h"
#include "Afx/system/detail/SettingsReplace.h"
#include "Afx/system/FilePath.h"
#include "Afx/text/Utf8.h"

namespace Afx::Detail
{
namespace
{

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = 4u << 20; // a larger one is no settings file

/// The file's text; empty when there is no such file, nothing when there is one that cannot be read.
std::optional<std::string> ReadAll(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return std::string();
    if (status.type() != fs::file_type::regular)
        return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > kLargestFile)
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    file.read(text.data(), static_cast<std::streamsize>(size));
    if (file.bad() || !file.is_open())
        return std::nullopt;
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

/// The file itself when `path` is a link to it: the link stays.
fs::path Target(const std::string& path)
{
    std::error_code error;
    fs::path target = fs::weakly_canonical(ToPath(path), error);
    return error ? ToPath(path) : target;
}

} // namespace

std::optional<CString> ReadSettingsFile(const std::string& path, std::string_view section, std::string_view name)
{
    if (path.empty())
        return std::nullopt;
    const std::optional<std::string> text = ReadAll(ToPath(path));
    if (!text)
        return std::nullopt;
    std::optional<std::string> value = FindIniValue(ToUtf8(*text), section, name);
    if (!value)
        return std::nullopt;
    return CString(std::move(*value));
}

bool WriteSettingsFile(const std::string& path, std::string_view section, std::string_view name,
                       std::optional<std::string_view> value)
{
    if (path.empty() || !IsIniSection(section) || !IsIniName(name))
        return false;
    const fs::path target = Target(path);
    std::error_code error;
    fs::create_directories(target.parent_path(), error);
    const SettingsLock lock(target);
    const std::optional<std::string> before = ReadAll(target);
    if (!before)
        return false; // writing now would lose what is in it
    const std::string after = SetIniValue(*before, section, name, value);
    return after == *before || ReplaceSettings(target, after);
}

} // namespace Afx::Detail
