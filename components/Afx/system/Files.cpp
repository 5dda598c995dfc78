#include "Afx/system/Files.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "Afx/system/detail/SystemName.h"
#include "Afx/system/FilePath.h"
#include "Afx/text/TextFold.h"
#include "Afx/text/Utf8.h"

namespace Afx
{
namespace
{

namespace fs = std::filesystem;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

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
    const std::string wanted = FromPath(path.filename());
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::optional<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const fs::path name = at->path().filename();
        if (EqualNoCase(FromPath(name), wanted) && (!found || at->path() < *found))
            found = at->path();
    }
    return found;
}

} // namespace

CString GetProgramDirectory()
{
    const fs::path program = Detail::ProgramPath();
    return program.has_parent_path() ? CString(FromPath(program.parent_path())) : CString(".");
}

std::optional<std::string> ReadTextFile(const std::string& path)
{
    std::optional<std::string> bytes = ReadBytes(ToPath(path));
    if (!bytes)
        if (const std::optional<fs::path> other = FindNoCase(ToPath(path)))
            bytes = ReadBytes(*other);
    if (!bytes)
        return std::nullopt;
    if (bytes->starts_with(kByteOrderMark))
        bytes->erase(0, kByteOrderMark.size());
    return ToUtf8(*bytes);
}

} // namespace Afx
