#include "Cellar/drivers/sqlite/NetworkShare.h"

#include <sys/vfs.h>

namespace Cellar::Sqlite
{

const char* ShareName(const std::filesystem::path& folder)
{
    struct statfs system = {};
    return statfs(folder.c_str(), &system) == 0 ? NetworkFileSystem(static_cast<std::uint32_t>(system.f_type))
                                                : nullptr;
}

} // namespace Cellar::Sqlite
