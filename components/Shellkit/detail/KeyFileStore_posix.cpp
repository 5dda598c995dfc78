#include "Shellkit/detail/KeyFileStore.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Afx/system/Descriptor_posix.h"

namespace Shellkit::Detail
{
namespace
{

std::error_code LastError() { return {errno, std::generic_category()}; }

/// The group reads and writes that file.
bool IsSharedBy(gid_t group, const std::string& path)
{
    constexpr mode_t kShared = S_IRGRP | S_IWGRP;
    struct stat status;
    return !path.empty() && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_gid == group &&
           (status.st_mode & kShared) == kShared;
}

} // namespace

OwnFile ReadOwnFile(const std::string& path, std::size_t limit, const std::string& shared)
{
    OwnFile result;
    const Afx::Descriptor file(path, O_RDONLY | O_NONBLOCK); // a pipe of that name must not hold us up
    struct stat status;
    if (!file || ::fstat(file.Get(), &status) != 0) {
        result.error = LastError();
        return result;
    }
    if (!S_ISREG(status.st_mode)) {
        result.error = std::make_error_code(std::errc::invalid_argument);
        return result;
    }
    result.groupMayRead = IsSharedBy(status.st_gid, shared);
    const mode_t others = S_IRWXG | S_IRWXO;
    if ((status.st_mode & (result.groupMayRead ? others & ~mode_t{S_IRGRP} : others)) != 0) {
        result.openToOthers = true;
        return result;
    }
    result.text.resize(limit + 1);
    std::size_t size = 0;
    while (size < result.text.size()) {
        const ssize_t got = ::read(file.Get(), result.text.data() + size, result.text.size() - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            result.error = LastError();
        if (got <= 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    result.text.resize(size);
    return result;
}

bool MakeOwnFile(const std::string& path, std::string_view text, bool forGroup)
{
    Afx::Descriptor file(path, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK, S_IRUSR | S_IWUSR);
    struct stat status;
    if (!file || ::flock(file.Get(), LOCK_EX) != 0 || ::fstat(file.Get(), &status) != 0)
        return false;
    if (!S_ISREG(status.st_mode) || status.st_size != 0 || status.st_uid != ::geteuid())
        return false; // whoever made it at the same time has written it by now
    const bool hasRights =
        ::fchmod(file.Get(), S_IRUSR | S_IWUSR | (forGroup ? S_IRGRP : 0)) == 0; // whatever the umask
    if (hasRights && Afx::WriteAll(file, text) && ::fsync(file.Get()) == 0 && file.Close()) {
        Afx::SyncFolderOf(path);
        return true;
    }
    ::unlink(path.c_str());
    return false;
}

} // namespace Shellkit::Detail
