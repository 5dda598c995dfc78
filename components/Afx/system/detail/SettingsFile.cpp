#include "Afx/system/detail/SettingsFile.h"

#include <cerrno>
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

/// A file's text, or why it is not taken; neither when there is no such file.
struct FileText
{
    std::string text, problem;
};

/// UTF-16 has a zero byte in every letter of ours: nothing would be found in it, and what was added would spoil it.
bool IsUtf16(std::string_view text) noexcept
{
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") || text.find('\0') != std::string_view::npos;
}

FileText ReadAll(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        return {};
    if (status.type() == fs::file_type::none)
        return {{}, "cannot be reached (" + error.message() + ")"};
    if (status.type() != fs::file_type::regular)
        return {{}, "is not a file"};
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > kLargestFile)
        return {{}, "has more than 4 MiB"};
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    file.read(text.data(), static_cast<std::streamsize>(size));
    if (file.bad() || !file.is_open())
        return {{}, "cannot be read (" + std::generic_category().message(errno) + ")"};
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (IsUtf16(text))
        return {{}, "is text in UTF-16, or none"};
    return {std::move(text), {}};
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
    std::optional<std::string> value = FindIniValue(ToUtf8(ReadAll(ToPath(path)).text), section, name);
    if (!value)
        return std::nullopt;
    return CString(std::move(*value));
}

std::string SettingsFileProblem(const std::string& path)
{
    return path.empty() ? std::string() : ReadAll(ToPath(path)).problem;
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
    const FileText before = ReadAll(target);
    if (!before.problem.empty())
        return false; // writing now would lose what is in it
    const std::string after = SetIniValue(before.text, section, name, value);
    return after == before.text || ReplaceSettings(target, after);
}

} // namespace Afx::Detail
