#include "Cellar/drivers/sqlite/FileRights.h"

#include <fstream>

namespace Cellar::Sqlite
{

bool MakeFile(const std::filesystem::path& file, Readers)
{
    return static_cast<bool>(std::ofstream(file, std::ios::binary | std::ios::app));
}

std::string NarrowFiles(const std::filesystem::path&) { return {}; }

} // namespace Cellar::Sqlite
