#pragma once

// This machine and its files.

#include <optional>
#include <string>

#include "Afx/CString.h"
#include "Afx/Export.h"

namespace Afx
{

/// The computer's network name: at most 15 bytes, cut at the first '.' and never inside a character; "Unknown" when
/// the system does not tell.
AFX_API CString GetComputerName();
/// Replaces what the system tells (tests); empty: the system's again.
AFX_API void SetComputerName(const CString& name);
/// The folder of the running program, without a separator at the end; "." when the system does not tell.
AFX_API CString GetProgramDirectory();
/// A whole file as text in UTF-8 (Windows-1252 is converted); nothing when it cannot be read. The file's own name is
/// found without regard to case where the file system keeps it.
AFX_API std::optional<std::string> ReadTextFile(const std::string& path);

} // namespace Afx
