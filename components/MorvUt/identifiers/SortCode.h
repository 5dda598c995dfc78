#pragma once

// Bank sort codes.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// The code with dashes: "123456" is 12-34-56. A code that has a dash stays as it is; longer ones are cut after six
/// characters (bytes), shorter ones end early (12-34-5). An empty code, or one that is only dashes, is the empty mask
/// "  -  -  ".
MORVUT_API CString FormatSortCode(const CString& code);

/// The empty text for a code that is only two dashes and blanks, as the empty mask is; any other stays as it is.
MORVUT_API CString TidySortCodeString(const CString& code);

/// Why a text is no sort code (six digits, as 12-34-56, 12 34 56 or 123456), for the user; empty when it is one. The
/// text is never repeated.
MORVUT_API CString WhyNotSortCode(const CString& code);
