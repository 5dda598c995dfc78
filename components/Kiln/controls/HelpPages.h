#pragma once

// Where the pages of the help are.

#include <string>

#include "Afx/text/CString.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// The folder of the pages, for this run.
KILN_API void SetHelpFolder(const std::string& folder);
/// The file of a page: "hmrc" is hmrc.md in that folder; empty while there is no folder.
KILN_API CString HelpPage(const char* page);

} // namespace Kiln
