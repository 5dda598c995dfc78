#pragma once

// What the operating system says of this machine and this program.

#include <filesystem>
#include <string>

namespace Afx::Detail
{

/// The machine's name in UTF-8; empty when the system does not tell.
std::string SystemName();
/// The running program's file; empty when the system does not tell.
std::filesystem::path ProgramPath();

} // namespace Afx::Detail
