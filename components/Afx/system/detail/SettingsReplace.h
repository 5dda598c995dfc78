#pragma once

// How a settings file is written: one program after the other, and the whole text at once.

#include <filesystem>
#include <memory>
#include <string_view>

namespace Afx::Detail
{

/// While it lives, other programs that write the settings in the folder of `path` wait, so that none undoes another's
/// change. On Windows, where this store is for tests only, nobody waits.
class SettingsLock
{
public:
    explicit SettingsLock(const std::filesystem::path& path);
    ~SettingsLock();
    SettingsLock(const SettingsLock&) = delete;
    SettingsLock& operator=(const SettingsLock&) = delete;

private:
    struct Held;
    std::unique_ptr<Held> m_held;
};

/// Writes a new file beside `path`, to the disk, and renames it, so that a crash leaves the old or the new text. A new
/// file is for its owner only, one that was there keeps its rights. False, and the old text stands, when that fails.
bool ReplaceSettings(const std::filesystem::path& path, std::string_view text);

} // namespace Afx::Detail
