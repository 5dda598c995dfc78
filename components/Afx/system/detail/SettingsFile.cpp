#include "Afx/system/detail/SettingsFile.h"

#include <filesystem>
#include <fstream>

#ifndef _WIN32
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "Afx/Platform.h"
#include "Afx/system/detail/FilePath.h"
#include "Afx/system/detail/IniText.h"
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

#ifdef _WIN32

/// Programs that write at the same time wait for each other; this store is for tests only on this system.
class WriteLock
{
public:
    explicit WriteLock(const fs::path&) noexcept {}
};

bool Replace(const fs::path& path, std::string_view text)
{
    fs::path fresh = path;
    fresh += ".new";
    {
        std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
        if (!file.flush())
            return false;
    }
    return MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

#else

class Descriptor
{
public:
    explicit Descriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    int Get() const noexcept { return m_descriptor; }

private:
    int m_descriptor;
};

/// Programs that write at the same time wait for each other, so that none undoes the other's change. The folder is
/// locked and not the file, which every write replaces.
class WriteLock
{
public:
    explicit WriteLock(const fs::path& path)
        : m_folder(::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        while (::flock(m_folder.Get(), LOCK_EX) != 0 && errno == EINTR)
            continue;
    }

private:
    Descriptor m_folder; // closing it releases the lock
};

bool WriteAll(int descriptor, std::string_view text) noexcept
{
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Writes a new file beside `path`, to the disk, and renames it, so that a crash leaves the old or the new text.
bool Replace(const fs::path& path, std::string_view text)
{
    fs::path fresh = path;
    fresh += ".new";
    struct stat old;
    const mode_t mode = ::stat(path.c_str(), &old) == 0 ? old.st_mode & 07777 : S_IRUSR | S_IWUSR;
    bool good = false;
    {
        const Descriptor file(
            ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
        good = file.Get() >= 0 && WriteAll(file.Get(), text) && ::fchmod(file.Get(), mode) == 0 &&
               ::fsync(file.Get()) == 0;
    }
    good = good && ::rename(fresh.c_str(), path.c_str()) == 0;
    if (!good)
        ::unlink(fresh.c_str());
    return good;
}

#endif

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
    const WriteLock lock(target);
    const std::optional<std::string> before = ReadAll(target);
    if (!before)
        return false; // writing now would lose what is in it
    const std::string after = SetIniValue(*before, section, name, value);
    return after == *before || Replace(target, after);
}

} // namespace Afx::Detail
