#pragma once

// Where the program stands, and whole files as text.

#include <optional>
#include <string>

#include "Afx/Export.h"
#include "Afx/text/CString.h"

namespace Afx
{

/// The folder of the running program, without a separator at the end; "." when the system does not tell.
AFX_API CString GetProgramDirectory();
/// A whole file as text in UTF-8 (Windows-1252 is converted); nothing when it cannot be read. The file's own name is
/// found without regard to case where the file system keeps it.
AFX_API std::optional<std::string> ReadTextFile(const std::string& path);

} // namespace Afx
