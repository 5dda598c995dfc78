#include "Afx/system/detail/SettingsReplace.h"

#include <fstream>

#include "Afx/Platform.h"

namespace Afx::Detail
{

struct SettingsLock::Held
{};

SettingsLock::SettingsLock(const std::filesystem::path&) {}
SettingsLock::~SettingsLock() = default;

bool ReplaceSettings(const std::filesystem::path& path, std::string_view text)
{
    std::filesystem::path fresh = path;
    fresh += ".new";
    {
        std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
        if (!file.flush())
            return false;
    }
    return MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

} // namespace Afx::Detail
