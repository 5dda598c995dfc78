#pragma once

// Texts as Windows takes and gives them, in UTF-16.

#include <string>
#include <string_view>

#include "Afx/Export.h"

namespace Afx
{

AFX_API std::wstring Widen(std::string_view text);
AFX_API std::string Narrow(std::wstring_view wide);

} // namespace Afx
