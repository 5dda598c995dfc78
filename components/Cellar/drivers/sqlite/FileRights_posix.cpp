#include "Cellar/drivers/sqlite/FileRights.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Afx/system/Descriptor_posix.h"

namespace Cellar::Sqlite
{
namespace
{

namespace fs = std::filesystem;

constexpr mode_t kOwners = S_IRUSR | S_IWUSR;
constexpr mode_t kGroups = kOwners | S_IRGRP | S_IWGRP;
constexpr mode_t kRights = S_IRWXU | S_IRWXG | S_IRWXO;

/// The files that are made in `folder` belong to this group too.
bool HandsGroupOn(const fs::path& folder, gid_t group)
{
    struct stat status;
    return ::stat(folder.c_str(), &status) == 0 && (status.st_mode & S_ISGID) != 0 && status.st_gid == group;
}

struct Rights
{
    bool isWide = false; // the file is open to more than it may be
    bool isOurs = false;
    mode_t narrow = 0;
};

Rights RightsOf(const fs::path& file)
{
    struct stat status;
    if (::lstat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    const bool isGroups = (status.st_mode & kGroups) == kGroups && HandsGroupOn(file.parent_path(), status.st_gid);
    const mode_t narrow = status.st_mode & (isGroups ? kGroups : S_IRWXU);
    return {narrow != (status.st_mode & kRights), status.st_uid == ::geteuid(), narrow};
}

/// Whether the file was open to more than it may be, and is not any more.
bool Narrow(const fs::path& file)
{
    const Rights rights = RightsOf(file);
    return rights.isWide && rights.isOurs && ::chmod(file.c_str(), rights.narrow) == 0;
}

} // namespace

bool MakeFile(const fs::path& file, Readers readers)
{
    Afx::Descriptor opened(file.string(), O_WRONLY | O_CREAT, kOwners);
    struct stat status;
    bool done = opened && ::fstat(opened.Get(), &status) == 0;
    // Whoever opened it before us has content in it by now, and its rights are his.
    if (done && status.st_size == 0 && status.st_uid == ::geteuid())
        done = ::fchmod(opened.Get(), readers == Readers::Group ? kGroups : kOwners) == 0;
    return opened.Close() && done;
}

std::string NarrowFiles(const fs::path& file)
{
    bool isNarrowed = false;
    for (const char* const ending : {"", "-wal", "-shm", "-journal"}) {
        fs::path each = file;
        isNarrowed = Narrow(each += ending) || isNarrowed;
    }
    if (!isNarrowed || RightsOf(file).isWide) // another's file, of which only the journals are ours
        return {};
    return "other users of this computer could read " + file.string() + "; now they cannot";
}

} // namespace Cellar::Sqlite
