#pragma once

// Where the pages of the help are.

#include <string>

#include "Afx/text/CString.h"

namespace Desk
{

/// The folder of the pages, for this run.
void SetHelpFolder(const std::string& folder);
/// The file of a page: "hmrc" is hmrc.md in that folder; empty while there is no folder.
CString HelpPage(const char* page);

} // namespace Desk
