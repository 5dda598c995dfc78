#include "Backup.h"

#include <filesystem>

#include "PartFile.h"

namespace Morv
{

std::int64_t BackUp(Cellar::CConnection& practice, const std::string& file)
{
    const PartFile part(file, "backup");
    try {
        practice.CopyTo(part.GetName());
    } catch (const Cellar::DatabaseError& error) {
        if (error.GetCategory() == Cellar::DatabaseError::Category::Busy)
            throw;
        part.ThrowNotWritten(error.GetReason());
    }
    const auto pageSize = practice.Queryf("PRAGMA page_size").rows.at(0).at(0);
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(part.GetName()));
    part.Finish();
    return bytes / Cellar::ToInt64(pageSize);
}

} // namespace Morv
