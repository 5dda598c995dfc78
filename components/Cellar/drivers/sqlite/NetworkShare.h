#pragma once

// Folders on other computers.

#include <cstdint>
#include <filesystem>

namespace Cellar::Sqlite
{

/// The name of a network file system by the number that statfs gives it; null for any other. Locks and shared memory
/// do not work across computers there.
const char* NetworkFileSystem(std::uint32_t type) noexcept;

/// The name of the network file system that holds `folder`, or null; null too where the system does not tell.
const char* ShareName(const std::filesystem::path& folder);

} // namespace Cellar::Sqlite
