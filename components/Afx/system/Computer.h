#pragma once

// This machine's name.

#include "Afx/Export.h"
#include "Afx/text/CString.h"

namespace Afx
{

/// The computer's network name: at most 15 bytes, cut at the first '.' and never inside a character; "Unknown" when
/// the system does not tell.
AFX_API CString GetComputerName();
/// Replaces what the system tells (tests); empty: the system's again.
AFX_API void SetComputerName(const CString& name);

} // namespace Afx
