#include "Afx/Computer.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "Afx/detail/FilePath.h"
#include "Afx/Platform.h"
#include "Afx/Text.h"
#include "Afx/TextFold.h"

namespace Afx
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t kLongestComputerName = 15; // as Windows names computers
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// What stands in for the system's answer; never destroyed.
CString& ChosenName()
{
    static auto& name = *new CString;
    return name;
}

#ifdef _WIN32

std::string SystemName()
{
    char name[256];
    DWORD size = sizeof name;
    return GetComputerNameExA(ComputerNameNetBIOS, name, &size) ? ToUtf8({name, size}) : std::string();
}

fs::path ProgramPath()
{
    wchar_t path[32768];
    const DWORD length = GetModuleFileNameW(nullptr, path, static_cast<DWORD>(std::size(path)));
    return fs::path(std::wstring_view(path, length));
}

#else

std::string SystemName()
{
    char name[256] = "";
    if (::gethostname(name, sizeof name - 1) != 0)
        return {};
    return ToUtf8(name);
}

fs::path ProgramPath()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

#endif

std::string_view CutName(std::string_view name) noexcept
{
    name = name.substr(0, name.find('.'));
    return CutUtf8(name, kLongestComputerName);
}

std::optional<std::string> ReadBytes(const fs::path& path)
{
    std::error_code error;
    if (fs::is_directory(path, error))
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad())
        return std::nullopt;
    return bytes;
}

/// The file of the same folder whose name is that of `path` in another case; the first in byte order when there are
/// several, nothing when there is none.
std::optional<fs::path> FindNoCase(const fs::path& path)
{
    const std::string wanted = Detail::FromPath(path.filename());
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::optional<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const fs::path name = at->path().filename();
        if (EqualNoCase(Detail::FromPath(name), wanted) && (!found || at->path() < *found))
            found = at->path();
    }
    return found;
}

} // namespace

CString GetComputerName()
{
    const std::string name = ChosenName().IsEmpty() ? SystemName() : ChosenName().Str();
    const std::string_view cut = CutName(name);
    return cut.empty() ? CString("Unknown") : CString(cut);
}

void SetComputerName(const CString& name) { ChosenName() = name; }

CString GetProgramDirectory()
{
    const fs::path program = ProgramPath();
    return program.has_parent_path() ? CString(Detail::FromPath(program.parent_path())) : CString(".");
}

std::optional<std::string> ReadTextFile(const std::string& path)
{
    std::optional<std::string> bytes = ReadBytes(Detail::ToPath(path));
    if (!bytes)
        if (const std::optional<fs::path> other = FindNoCase(Detail::ToPath(path)))
            bytes = ReadBytes(*other);
    if (!bytes)
        return std::nullopt;
    if (bytes->starts_with(kByteOrderMark))
        bytes->erase(0, kByteOrderMark.size());
    return ToUtf8(*bytes);
}

} // namespace Afx
