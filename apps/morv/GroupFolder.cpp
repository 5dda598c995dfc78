#include "GroupFolder.h"

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "common/CommandError.h"
#include "Output.h"

namespace Morv
{

namespace
{

constexpr mode_t kMode = S_ISGID | S_IRWXU | S_IRWXG;

bool IsShared(const std::string& folder, gid_t group)
{
    struct stat status;
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_gid == group &&
           (status.st_mode & kMode) == kMode;
}

bool Make(const std::string& folder, gid_t group)
{
    if (mkdir(folder.c_str(), S_IRWXU) != 0)
        return false;
    if (chown(folder.c_str(), static_cast<uid_t>(-1), group) == 0 && chmod(folder.c_str(), kMode) == 0 &&
        IsShared(folder, group))
        return true;
    rmdir(folder.c_str());
    return false;
}

} // namespace

void PrepareGroupFolder(const std::string& file, const std::string& group)
{
    const struct group* entry = getgrnam(group.c_str());
    if (!entry)
        throw CommandError(Exit::BadInput, "UNKNOWN_GROUP", "--group: there is no group " + Quoted(group),
                           "Name a group of this computer.");
    const std::string folder = std::filesystem::absolute(file).parent_path().string();
    if (!IsShared(folder, entry->gr_gid) && !Make(folder, entry->gr_gid))
        throw CommandError(Exit::CannotOpen, "NOT_A_GROUP_FOLDER",
                           "the folder " + Quoted(folder) + " is not shared by the group " + Quoted(group),
                           "Run: chgrp " + group + " " + Quoted(folder) + " && chmod 2770 " + Quoted(folder));
}

} // namespace Morv
