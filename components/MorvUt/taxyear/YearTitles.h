#pragma once

// Titles of tax years, from the real year.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// "23-24" for 2024, "99-00" for 2000.
MORVUT_API CString FormatYearString2Digit(int year);
/// "2023/24" for 2024, "1999/00" for 2000.
MORVUT_API CString FormatYearString42Digit(int year);
/// "2023-24" for 2024, "1999-00" for 2000.
MORVUT_API CString FormatYearString42DigitWithHyphen(int year);
/// "2023/24" for 2024; a year that ends a century is written out: "1999/2000" for 2000.
MORVUT_API CString FormatYearString4Digit(int year);

/// Writes the title of a relative year ("2023/24" for 33) and its end mark into `buffer` of `size` bytes. Too small a
/// buffer is refused: its first byte becomes 0 and CInvalidArgException is thrown; null or size 0 throws at once.
MORVUT_API void GetTaxYearTitle(short relative, char* buffer, unsigned size);
