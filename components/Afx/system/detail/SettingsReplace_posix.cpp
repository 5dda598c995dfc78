#include "Afx/system/detail/SettingsReplace.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Afx/system/Descriptor_posix.h"

namespace Afx::Detail
{

/// The folder is locked and not the file, which every write replaces; closing it releases the lock.
struct SettingsLock::Held
{
    Descriptor folder;
};

SettingsLock::SettingsLock(const std::filesystem::path& path)
    : m_held(new Held{Descriptor(path.parent_path().string(), O_RDONLY | O_DIRECTORY)})
{
    while (::flock(m_held->folder.Get(), LOCK_EX) != 0 && errno == EINTR)
        continue;
}

SettingsLock::~SettingsLock() = default;

bool ReplaceSettings(const std::filesystem::path& path, std::string_view text)
{
    const std::string fresh = path.string() + ".new";
    struct stat old;
    const mode_t owners = S_IRUSR | S_IWUSR, rights = ::stat(path.c_str(), &old) == 0 ? old.st_mode & 07777 : owners;
    Descriptor file(fresh, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, owners);
    if (file && WriteAll(file, text) && ::fchmod(file.Get(), rights) == 0 && ::fsync(file.Get()) == 0 && file.Close() &&
        ::rename(fresh.c_str(), path.c_str()) == 0) {
        SyncFolderOf(path.string());
        return true;
    }
    ::unlink(fresh.c_str());
    return false;
}

} // namespace Afx::Detail
