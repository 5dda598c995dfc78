#include "Cellar/drivers/sqlite/NetworkShare.h"

#include "Afx/Platform.h"

namespace Cellar::Sqlite
{

const char* ShareName(const std::filesystem::path& folder)
{
    const std::filesystem::path root = folder.root_path();
    const bool isShare = folder.native().starts_with(L"\\\\") || GetDriveTypeW(root.c_str()) == DRIVE_REMOTE;
    return isShare ? "a mapped drive or UNC path" : nullptr;
}

} // namespace Cellar::Sqlite
